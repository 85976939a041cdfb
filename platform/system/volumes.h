// The volumes that are mounted, and which of them a drive list offers.
#pragma once

#include <string>
#include <vector>

namespace blockhouse {

struct Volume {
    std::string root;       // where it is mounted
    std::string fileSystem; // its kind, as the system calls it
};

// In the system's order. The volumes themselves are not asked: one on a machine that does not answer would keep the
// program waiting.
[[nodiscard]] std::vector<Volume> mountedVolumes();

// The folder "/" (if it is among them) and `home` first, then the others in their order, each once. Left out are those
// that hold no one's data: the system's own windows on itself and packed programs.
[[nodiscard]] std::vector<std::string> drivesOf(const std::vector<Volume>& volumes, const std::string& home);

} // namespace blockhouse
