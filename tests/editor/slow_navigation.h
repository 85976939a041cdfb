// The navigation once more, slow and obvious, by way of a lowered copy.
#pragma once

#include "editor/navigation.h"
#include "platform/text/codepage.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

namespace blockhouse {

inline const std::map<HeaderKind, std::string> slowKeywords = {{HeaderKind::Object, "object "},
                                                               {HeaderKind::Weapon, "weapon "},
                                                               {HeaderKind::SpecialPower, "specialpower "},
                                                               {HeaderKind::FXList, "fxlist "},
                                                               {HeaderKind::SkirmishBuildList, "skirmishbuildlist "}};

inline std::ptrdiff_t loweredHeader(const std::string& text, HeaderKind kind, const std::string& name) {
    const std::string lowered = codepage::lowered(text);
    std::ptrdiff_t best = 0;
    for (const char* pair : {"\r\r", "\r\n", "\n\r", "\n\n"}) {
        const std::string line = pair[0] + slowKeywords.at(kind) + codepage::lowered(name) + pair[1];
        const auto at = static_cast<std::ptrdiff_t>(lowered.find(line)) + 1;
        best = at > 0 && (best == 0 || at < best) ? at : best;
    }
    return best;
}

inline std::vector<SettingEntry> loweredSettings(const std::string& text, HeaderKind kind, std::size_t z,
                                                 const std::vector<std::string>& jumps) {
    std::vector<SettingEntry> settings;
    const std::string lowered = codepage::lowered(text);
    std::size_t i = z;
    if (kind != HeaderKind::SkirmishBuildList) {
        i = text.size();
        for (const char* lineBreak : {"\r", "\n"}) {
            const std::size_t next =
                z - 1 > text.size() ? std::string::npos : lowered.find(lineBreak + slowKeywords.at(kind), z - 1);
            i = std::min(i, next == std::string::npos ? i : next + 1);
        }
    }
    const std::size_t a = lowered.substr(0, i).rfind("end") + 1;
    for (const std::string& name : jumps) {
        const std::size_t q = z - 1 > text.size() ? 0 : lowered.find(codepage::lowered(name), z - 1) + 1;
        if (q != 0 && q < a) {
            settings.push_back({name, {}});
            const auto first = std::find_if(settings.begin(), settings.end(), [&](const SettingEntry& entry) {
                return codepage::lowered(entry.name) == codepage::lowered(name);
            });
            first->itemData.value = static_cast<std::ptrdiff_t>(q);
        }
    }
    return settings;
}

} // namespace blockhouse
