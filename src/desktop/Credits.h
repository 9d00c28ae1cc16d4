#pragma once

namespace velmaro::credits {

// The texts that name the project, the same on every form that shows them.
inline constexpr const char* OneLine = "The Velmaro team";
inline constexpr const char* Programmers = "Written and kept by the Velmaro developers";
inline constexpr const char* Thanks = "With thanks to all players who help";
inline constexpr const char* HomePage = "https://velmaro.example/";

}  // namespace velmaro::credits
