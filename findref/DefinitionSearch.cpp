#include "findref/DefinitionSearch.h"

#include "platform/system/files.h"
#include "platform/text/paths.h"

#include <utility>

namespace blockhouse {
namespace {

constexpr const char* searchedFiles = "*ini.*";

} // namespace

DefinitionSearch::DefinitionSearch(EntryList Dirs, std::string_view name)
    : Dirs_(std::move(Dirs)), name_(name), piece_(pieceSize) {}

bool DefinitionSearch::next() {
    if (found_.size() >= mostFound)
        return false;
    if (reader_)
        readPiece();
    else if (path_ < paths_.size())
        openNextFile();
    else if (directory_ < Dirs_.count())
        listNextDirectory();
    else
        return false;
    return true;
}

void DefinitionSearch::listNextDirectory() {
    const std::string& directory = Dirs_.item(++directory_);
    const Result<std::vector<std::string>> names = fileNamesIn(directory, searchedFiles);
    if (!names)
        return note(names.error());
    paths_.clear();
    path_ = 0;
    for (const std::string& name : names.value())
        if (std::string path = joinPath(directory, name); seen_.insert(path).second)
            paths_.push_back(std::move(path));
}

void DefinitionSearch::openNextFile() {
    Result<FileReader> reader = FileReader::open(paths_[path_++]);
    if (!reader)
        return note(reader.error());
    reader_ = std::move(reader).value();
    scan_.emplace(name_);
}

void DefinitionSearch::readPiece() {
    const Result<std::size_t> read = reader_->read(piece_);
    if (!read) {
        note(read.error());
        return reader_.reset();
    }
    const bool isLast = read.value() < piece_.size();
    scan_->scan({piece_.data(), read.value()}, isLast, [this](const DefinitionScan::Found& each) {
        found_.push_back({paths_[path_ - 1], each.name, each.line, each.keyword});
    });
    if (isLast)
        reader_.reset();
}

void DefinitionSearch::note(const FileError& error) {
    if (!failure_)
        failure_ = error;
}

} // namespace blockhouse
