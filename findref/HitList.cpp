#include "findref/HitList.h"

#include "platform/text/paths.h"

namespace blockhouse {

void HitList::clear() {
    files_.clear();
    texts_.clear();
    hits_.clear();
}

void HitList::beginFile(std::string directory, std::string name) {
    const bool lastIsUnused = !files_.empty() && (hits_.empty() || hits_.back().file != files_.size() - 1);
    if (lastIsUnused)
        files_.pop_back();
    files_.push_back({std::move(directory), std::move(name)});
}

bool HitList::add(TextPosition position, std::string_view text) {
    if (count() == mostHits)
        return false;
    if (texts_.empty() || texts_.back() != text)
        texts_.emplace_back(text);
    hits_.push_back({files_.size() - 1, position, texts_.size() - 1});
    return true;
}

std::string HitList::displayLine(int index) const {
    return fileOf(index).name + " :" + std::to_string(position(index).value);
}

std::string HitList::path(int index) const {
    return joinPath(fileOf(index).directory, fileOf(index).name);
}

} // namespace blockhouse
