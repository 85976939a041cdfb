#include "editor/keyword_table.h"

#include <string_view>

namespace blockhouse {

namespace {

constexpr std::string_view keywords =
    "SkirmishBuildList|ConditionState|End|AliasConditionState|ArmorSet|WeaponSet|Weapon|Body|Behavior|AttackAreaDecal|"
    "TargetingReticleDecal|Specialpower|Fxlist|DefaultConditionState|UnitSpecificSounds|Turret|Object|END";

} // namespace

std::vector<std::string> KeywordList() {
    std::vector<std::string> list;
    std::size_t start = 0;
    for (std::size_t bar = keywords.find('|'); bar != std::string_view::npos; bar = keywords.find('|', start)) {
        list.emplace_back(keywords.substr(start, bar - start));
        start = bar + 1;
    }
    list.emplace_back(keywords.substr(start));
    return list;
}

} // namespace blockhouse
