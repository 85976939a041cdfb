// The block scan once more, slow and obvious: a lowered copy, and a list box given one name after the other.
#pragma once

#include "editor/block_scan.h"
#include "platform/text/codepage.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace blockhouse {

using Entries = std::vector<BlockEntry>;

inline std::size_t lineEndFrom(const std::string& text, std::size_t start) {
    std::size_t end = text.find('\r', start);
    if (end == std::string::npos) {
        end = text.find('\n', start);
    }
    return std::min(end, text.size());
}

inline int firstEqual(const Entries& entries, const std::string& what) {
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (codepage::lowered(entries[i].name) == codepage::lowered(what)) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

// A sorted list box that is given one name after the other.
inline void addSorted(Entries& entries, const std::string& name, HeaderKind kind) {
    const auto place = std::find_if(entries.begin(), entries.end(), [&](const BlockEntry& entry) {
        return codepage::lowered(entry.name) > codepage::lowered(name);
    });
    entries.insert(place, {name, HeaderKind::None});
    entries[static_cast<std::size_t>(firstEqual(entries, name))].kind = kind;
}

inline Entries listedOneByOne(const std::string& text, HeaderKind kind) {
    struct Rule {
        std::string keyword;
        bool lineStart;
        std::size_t longerThan;
    };

    static const std::map<HeaderKind, Rule> rules = {{HeaderKind::Object, {"object ", true, 5}},
                                                     {HeaderKind::Weapon, {"weapon ", false, 7}},
                                                     {HeaderKind::SpecialPower, {"specialpower ", false, 5}},
                                                     {HeaderKind::FXList, {"fxlist ", false, 5}},
                                                     {HeaderKind::SkirmishBuildList, {"skirmishbuildlist ", true, 2}}};
    const Rule& rule = rules.at(kind);
    const std::string lower = codepage::lowered(text);
    Entries entries;
    for (std::size_t at = lower.find(rule.keyword); at != std::string::npos; at = lower.find(rule.keyword, at + 1)) {
        const std::size_t start = at + rule.keyword.size();
        const std::string name = text.substr(start, lineEndFrom(text, start) - start);
        const bool placed =
            !rule.lineStart || at == 0 || std::string(" \r\t\n").find(text[at - 1]) != std::string::npos;
        if (placed && name.find_first_of("= ") == std::string::npos && name.size() > rule.longerThan) {
            addSorted(entries, name, kind);
        }
    }
    return entries;
}

inline std::optional<std::string> nameLookedUpBackwards(const std::string& text, HeaderKind kind,
                                                        std::size_t startout) {
    static const std::map<HeaderKind, std::string> keywords = {{HeaderKind::Object, "\nobject "},
                                                               {HeaderKind::Weapon, "\nweapon "},
                                                               {HeaderKind::SpecialPower, "\nsuperweapon "},
                                                               {HeaderKind::FXList, "\nfxlist "},
                                                               {HeaderKind::SkirmishBuildList, "\nskirmishbuildlist "}};
    const std::string& keyword = keywords.at(kind);
    const std::size_t at = codepage::lowered(text.substr(0, startout + 30)).rfind(keyword);
    if (at == std::string::npos) {
        return std::nullopt;
    }
    const std::size_t start = at + keyword.size();
    return text.substr(start, lineEndFrom(text, start) - start);
}

} // namespace blockhouse
