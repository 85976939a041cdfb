#include "platform/system/names_beside.h"

#include <array>
#include <charconv>
#include <ctime>

namespace blockhouse {
namespace {

constexpr std::string_view prefix = ".blockhouse-";
constexpr std::string_view suffix = ".tmp";

std::optional<std::uint64_t> numberAtStartOf(std::string_view& text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || number == 0)
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return number;
}

std::string timeNow() {
    const std::time_t now = std::time(nullptr);
    std::array<char, sizeof "2026-11-23 18.38.05"> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%d %H.%M.%S", std::localtime(&now));
    return text.data();
}

} // namespace

std::string temporaryName(std::uint64_t process, unsigned number) {
    return std::string(prefix) + std::to_string(process) + "-" + std::to_string(number) + std::string(suffix);
}

std::string keptName(std::uint64_t process, unsigned number) {
    return std::string(prefix) + std::to_string(process) + "-" + std::to_string(number) + ".old";
}

std::optional<std::uint64_t> processOfTemporary(std::string_view name) {
    if (!name.starts_with(prefix) || !name.ends_with(suffix) || name.size() < prefix.size() + suffix.size())
        return std::nullopt;
    std::string_view numbers = name.substr(prefix.size(), name.size() - prefix.size() - suffix.size());
    const std::optional<std::uint64_t> process = numberAtStartOf(numbers);
    if (!process || !numbers.starts_with('-'))
        return std::nullopt;
    numbers.remove_prefix(1);
    return numberAtStartOf(numbers) && numbers.empty() ? process : std::nullopt;
}

std::string backupName(std::string_view name, int number) {
    const std::size_t dot = name.rfind('.');
    const std::string_view stem = dot == std::string_view::npos || dot == 0 ? name : name.substr(0, dot);
    return std::string(stem) + " " + timeNow() + (number == 1 ? "" : " (" + std::to_string(number) + ")") + ".bak";
}

} // namespace blockhouse
