#pragma once

#include <string>
#include <string_view>

namespace velmaro {

// The name that a command or a line of the kill list asks for, as processes bear it: in lower case, without blanks and
// quotes around it and, where names are no parts of paths, without a folder.
std::string SoughtName(std::string_view name);

// True where the process of a name is the sought one, both in lower case: where the name ends so or, where names are
// whole parts of paths, where it is that path or ends so behind a separator.
bool FitsName(std::string_view running, std::string_view sought);

// True where an entry of the no-kill list, in any case, covers a name in lower case: a pattern by fitting its end, one
// without wildcards as whole parts of it where names are such. Throws RuntimeError for an invalid pattern.
bool Covers(std::string_view entry, std::string_view running);

}  // namespace velmaro
