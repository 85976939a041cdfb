#include "findref/ReferenceSearch.h"

#include "platform/system/files.h"
#include "platform/text/paths.h"

#include <utility>

namespace blockhouse {
namespace {

constexpr const char* searchedFiles = "*ini.*";

} // namespace

ReferenceSearch::ReferenceSearch(const EntryList& Dirs, HitList& hits)
    : Dirs_(Dirs), hits_(hits), directories_(Dirs.count()), piece_(pieceSize) {
    hits_.clear();
}

ReferenceSearch::Step ReferenceSearch::next(std::string_view what) {
    switch (state_) {
    case State::BetweenFiles:
        return nextFile();
    case State::DirectoryReached:
        if (auto end = listDirectory())
            return *std::move(end);
        return nextFile();
    case State::FileReached:
        if (auto end = openFile())
            return *std::move(end);
        return nextPiece(what);
    case State::InFile:
        break;
    }
    return nextPiece(what);
}

ReferenceSearch::Step ReferenceSearch::nextFile() {
    if (file_ == files_.size())
        return nextDirectory();
    state_ = State::FileReached;
    return FileReached{static_cast<int>(file_++), static_cast<int>(files_.size()) - 1};
}

ReferenceSearch::Step ReferenceSearch::nextDirectory() {
    if (directory_ == directories_)
        return Ended{};
    state_ = State::DirectoryReached;
    return DirectoryReached{++directory_};
}

std::optional<ReferenceSearch::Ended> ReferenceSearch::listDirectory() {
    if (directory_ > Dirs_.count())
        return Ended{};
    path_ = Dirs_.item(directory_);
    Result<std::vector<std::string>> files = fileNamesIn(path_, searchedFiles);
    if (!files)
        return Ended{files.error()};
    files_ = std::move(files).value();
    file_ = 0;
    return std::nullopt;
}

std::optional<ReferenceSearch::Ended> ReferenceSearch::openFile() {
    const std::string& name = files_[file_ - 1];
    Result<FileReader> reader = FileReader::open(joinPath(path_, name));
    if (!reader)
        return Ended{reader.error()};
    reader_ = std::move(reader).value();
    offset_ = 0;
    hits_.beginFile(path_, name);
    state_ = State::InFile;
    return std::nullopt;
}

ReferenceSearch::Step ReferenceSearch::nextPiece(std::string_view what) {
    if (what != what_) {
        what_ = what;
        search_ = BlockSearch(what_);
    }
    const Result<std::size_t> read = reader_->read(piece_);
    if (!read)
        return Ended{read.error()};
    const std::string_view bytes(piece_.data(), read.value());
    const auto add = [this](TextPosition position) { return hits_.add(position, what_); };
    if (!search_.search(bytes, offset_, add))
        return Ended{std::nullopt, true};
    offset_ += bytes.size();
    if (bytes.size() < piece_.size()) {
        reader_.reset();
        state_ = State::BetweenFiles;
    }
    return Searched{};
}

} // namespace blockhouse
