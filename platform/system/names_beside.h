// The names of the files that a save puts beside the one it writes.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace blockhouse {

// ".blockhouse-<process>-<number>.tmp": the new content on its way to the file's name. No other program makes such
// names.
[[nodiscard]] std::string temporaryName(std::uint64_t process, unsigned number);

// The same with ".old": a name for what is not to be lost, whatever happens to the process. Nobody ever removes it.
[[nodiscard]] std::string keptName(std::uint64_t process, unsigned number);

// Whose temporary file that is; nothing if the name is none of these.
[[nodiscard]] std::optional<std::uint64_t> processOfTemporary(std::string_view name);

// "<stem> <date> <time>.bak", in local time: what a save found in the place of the file `name` and did not know. From
// number 2 on with the number behind the time, for a name that is taken. A name that only begins with a dot is all
// stem.
[[nodiscard]] std::string backupName(std::string_view name, int number);

} // namespace blockhouse
