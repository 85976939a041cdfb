#include "shell/list_file.h"

#include "platform/system/path_list.h"

#include <algorithm>

namespace blockhouse {

std::optional<std::string> ListFileReader::next() {
    if (atEnd() && !afterComma_)
        return std::nullopt;
    afterComma_ = false;
    skipBlanks();
    std::string field = !atEnd() && bytes_[at_] == '"' ? quoted() : upTo(",\r\n");
    leaveField();
    return field;
}

void ListFileReader::skipBlanks() {
    at_ = std::min(bytes_.find_first_not_of(' ', at_), bytes_.size());
}

std::string ListFileReader::upTo(std::string_view stops) {
    const std::size_t begin = at_;
    at_ = std::min(bytes_.find_first_of(stops, at_), bytes_.size());
    return bytes_.substr(begin, at_ - begin);
}

std::string ListFileReader::quoted() {
    ++at_;
    std::string field = upTo("\"\r\n");
    if (!atEnd() && !atLineEnd())
        ++at_;
    skipBlanks();
    return field;
}

void ListFileReader::leaveField() {
    if (atEnd())
        return;
    if (bytes_[at_] == ',') {
        ++at_;
        afterComma_ = true;
    } else if (atLineEnd()) {
        at_ += bytes_.compare(at_, 2, "\r\n") == 0 ? 2 : 1;
    }
}

std::string writtenList(const EntryList& entries) {
    std::string text;
    for (const std::string& entry : entries)
        text.append(entry).append("\r\n");
    return text;
}

ListSave listSave(const EntryList& entries, const EntryList& before, const std::string& fileText) {
    EntryList onDisk;
    ListFileReader reader(fileText);
    while (std::optional<std::string> field = reader.next())
        onDisk.add(*std::move(field));
    if (onDisk == entries)
        return ListSave::Nothing;
    // What was written need not read back as it was: a comma cuts an entry in two.
    if (onDisk == before || fileText == writtenList(before))
        return ListSave::Write;
    return entries == before ? ListSave::Nothing : ListSave::KeepTheOther;
}

std::string listTextFrom(std::string_view name, std::string fileBytes) {
    return name == directoryListFile ? pathListFrom(std::move(fileBytes)) : fileBytes;
}

std::string listBytesOf(std::string_view name, std::string text) {
    return name == directoryListFile ? fileBytesOf(std::move(text)) : text;
}

} // namespace blockhouse
