#pragma once

#define ICON_APP 1
#define ICON_PRIORITY 2
#define ICON_MEMORY 3
#define ICON_RESOURCES 4
#define ICON_EDITOR 5
