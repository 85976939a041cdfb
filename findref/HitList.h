// What a search has found, in the order it was found.
#pragma once

#include "platform/text/units.h"

#include <string>
#include <string_view>
#include <vector>

namespace blockhouse {

class HitList {
public:
    // The lists that show hits count them with 16-bit signed numbers.
    static constexpr int mostHits = 32767;

    void clear();

    // The hits added next are in this file. Paths are the platform's bytes.
    void beginFile(std::string directory, std::string name);

    // A hit of a search for `text`; false when there is no room for it.
    bool add(TextPosition position, std::string_view text);

    [[nodiscard]] int count() const { return static_cast<int>(hits_.size()); }

    // For 0 <= index < count().
    [[nodiscard]] std::string displayLine(int index) const; // "data.ini :5133"
    [[nodiscard]] std::string path(int index) const;

    [[nodiscard]] TextPosition position(int index) const { return hit(index).position; }

    // What was looked for when the hit was found.
    [[nodiscard]] std::string text(int index) const { return texts_[hit(index).text]; }

private:
    struct File {
        std::string directory;
        std::string name;
    };

    struct Hit {
        std::size_t file;
        TextPosition position;
        std::size_t text;
    };

    [[nodiscard]] const Hit& hit(int index) const { return hits_.at(static_cast<std::size_t>(index)); }

    [[nodiscard]] const File& fileOf(int index) const { return files_[hit(index).file]; }

    std::vector<File> files_;        // those with hits, and the one begun last
    std::vector<std::string> texts_; // each that hits one after another have in common
    std::vector<Hit> hits_;
};

} // namespace blockhouse
