// The scans once more: positions counted from 1, 0 for nothing found, and one plain search after the other.
#pragma once

#include "placement/build_list.h"
#include "platform/text/codepage.h"

#include <cmath>
#include <cstdlib>
#include <optional>
#include <string>

namespace blockhouse {

class SlowScan {
public:
    explicit SlowScan(std::string text)
        : text_(std::move(text)), lowered_(codepage::lowered(text_)),
          lineEnd_(text_.find('\r') == std::string::npos ? "\n" : "\r") {}

    [[nodiscard]] std::ptrdiff_t find(const std::string& what, std::ptrdiff_t from) const {
        if (from > static_cast<std::ptrdiff_t>(text_.size()))
            return 0;
        return static_cast<std::ptrdiff_t>(lowered_.find(what, static_cast<std::size_t>(from - 1)) + 1);
    }

    // Nothing for a stretch of negative length.
    [[nodiscard]] std::optional<std::string> between(std::ptrdiff_t from, std::ptrdiff_t to) const {
        if (to < from)
            return std::nullopt;
        return text_.substr(std::min(static_cast<std::size_t>(from - 1), text_.size()),
                            static_cast<std::size_t>(to - from));
    }

    // "position name" of each keyword that counts, a line each, handed to `use`.
    template <typename Use>
    void eachNamed(const std::string& keyword, std::size_t shortest, std::ptrdiff_t from, std::ptrdiff_t to,
                   Use use) const {
        for (std::ptrdiff_t p = from; (p = find(keyword, p)) != 0 && p <= to; ++p) {
            const std::ptrdiff_t start = p + static_cast<std::ptrdiff_t>(keyword.size());
            const auto name = between(start, find(lineEnd_, p));
            const bool isWord =
                p == 1 || std::string(" \t\r\n").find(text_[static_cast<std::size_t>(p - 2)]) != std::string::npos;
            if (isWord && name && name->find('=') == std::string::npos && name->find(' ') == std::string::npos &&
                name->size() >= shortest)
                use(p, *name);
        }
    }

    [[nodiscard]] std::string sides() const {
        std::string result;
        eachNamed("skirmishbuildlist ", 3, 1, static_cast<std::ptrdiff_t>(text_.size()),
                  [&](std::ptrdiff_t p, const std::string& name) { result += std::to_string(p) + " " + name + "\n"; });
        return result;
    }

    [[nodiscard]] std::string structures(std::ptrdiff_t from, std::ptrdiff_t to) const {
        std::string found, failures;
        eachNamed("structure ", 6, from, to, [&](std::ptrdiff_t p, const std::string& name) {
            const std::ptrdiff_t e = find("end", p);
            const std::ptrdiff_t lx = find("location = x:", p);
            const std::ptrdiff_t ly = find("y:", p);
            if (lx > e || ly > e) {
                failures += "Could not find location for " + name + ":Skipping\n";
                return;
            }
            const auto x = between(lx + 13, find(" ", lx + 15));
            const auto y = between(ly + 2, find(lineEnd_, ly + 2));
            if (!x || !y)
                failures += "5\n";
            else if (!isNumber(*x) || !isNumber(*y))
                failures += "13\n";
            else
                found += std::to_string(lx) + " " + name + " " + std::to_string(std::strtof(x->c_str(), nullptr)) +
                         " " + std::to_string(std::strtof(y->c_str(), nullptr)) + "\n";
        });
        return found + failures;
    }

private:
    static bool isNumber(const std::string& text) {
        const std::size_t first = text.find_first_not_of(" \t");
        if (first == std::string::npos || text.find_first_not_of(" \t0123456789.+-eE") != std::string::npos)
            return false;
        char* end = nullptr;
        const float number = std::strtof(text.c_str(), &end);
        return end != text.c_str() && std::isfinite(number) &&
               text.find_first_not_of(" \t", static_cast<std::size_t>(end - text.c_str())) == std::string::npos;
    }

    std::string text_;
    std::string lowered_;
    std::string lineEnd_;
};

inline std::string shown(const std::vector<SideEntry>& sides) {
    std::string text;
    for (const SideEntry& side : sides)
        text += std::to_string(side.position.value) + " " + side.name + "\n";
    return text;
}

inline std::string shown(const BuildListScan& scan) {
    std::string text;
    for (const ScannedStructure& structure : scan.structures) {
        text += std::to_string(structure.entry.position.value) + " " + structure.entry.name + " " +
                std::to_string(structure.location.x.value) + " " + std::to_string(structure.location.y.value) + "\n";
    }
    for (const ScanFailure& failure : scan.failures)
        text += failure.message() + "\n";
    return text;
}

} // namespace blockhouse
