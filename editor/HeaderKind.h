// The kinds of block, told apart by the keyword that their header line begins with.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace blockhouse {

// The numbers are the item data of the block list.
enum class HeaderKind : std::int16_t {
    None = 0,
    Object = 1,
    Weapon = 2,
    SpecialPower = 3,
    FXList = 4,
    SkirmishBuildList = 5,
};

// All but None, in the order in which a file is looked through for them.
inline constexpr std::array headerKinds{HeaderKind::Object, HeaderKind::Weapon, HeaderKind::SpecialPower,
                                        HeaderKind::FXList, HeaderKind::SkirmishBuildList};

// Matched in any case; the blank is part of the match. Empty for None.
[[nodiscard]] constexpr std::string_view headerKeyword(HeaderKind kind) {
    switch (kind) {
    case HeaderKind::Object:
        return "object ";
    case HeaderKind::Weapon:
        return "weapon ";
    case HeaderKind::SpecialPower:
        return "specialpower ";
    case HeaderKind::FXList:
        return "fxlist ";
    case HeaderKind::SkirmishBuildList:
        return "skirmishbuildlist ";
    case HeaderKind::None:
        break;
    }
    return {};
}

// The keyword by which the block around a place in the file is found: that of special powers is another one.
[[nodiscard]] constexpr std::string_view enclosingKeyword(HeaderKind kind) {
    return kind == HeaderKind::SpecialPower ? "superweapon " : headerKeyword(kind);
}

} // namespace blockhouse
