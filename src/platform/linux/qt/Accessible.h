#pragma once

#include <QAccessibleInterface>
#include <QString>

namespace onlinux {

// What a screen reader is told of a widget that Qt knows too little of: the window of a form, and the bar of a meter.
// Null for any other. Qt asks only while an assistive technology listens.
QAccessibleInterface* NewAccessible(const QString& className, QObject* object);

}  // namespace onlinux
