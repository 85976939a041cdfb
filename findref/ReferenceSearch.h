// One search through every listed directory, in steps short enough for events to be served between them. It holds no
// file whole and ends quietly at the first failure: a directory that cannot be listed, a file that cannot be read,
// more hits than there is room for.
#pragma once

#include "findref/BlockSearch.h"
#include "findref/HitList.h"
#include "platform/system/FileReader.h"
#include "platform/text/EntryList.h"

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace blockhouse {

class ReferenceSearch {
public:
    // Empties `hits` and will fill it. Both must outlive the search; `Dirs` may change meanwhile, what counts is the
    // number of entries it has now and the entry that stands at a place when the search gets there.
    ReferenceSearch(const EntryList& Dirs, HitList& hits);

    // Nothing of the directory has been touched yet.
    struct DirectoryReached {
        int number; // of the list's entry, counted from 1
    };

    // The file has not been opened yet.
    struct FileReached {
        int index; // among the directory's files, counted from 0
        int last;  // the index of the last of them
    };

    // A piece of a file: there may be new hits.
    struct Searched {};

    struct Ended {
        std::optional<FileError> failure; // what ended the search early
        bool tooManyHits = false;         // or this
    };

    using Step = std::variant<DirectoryReached, FileReached, Searched, Ended>;

    // `what` is the text to look for from here on, in the documents' code page; empty, it is found nowhere. Not to be
    // called after Ended.
    Step next(std::string_view what);

    // Pieces are some whole blocks: small enough for a step to be short and to stay in the processor's caches.
    static constexpr std::size_t pieceSize = 64 * BlockSearch::blockSize;

private:
    enum class State { BetweenFiles, DirectoryReached, FileReached, InFile };

    Step nextFile();
    Step nextDirectory();
    Step nextPiece(std::string_view what);
    // Nothing, or what ends the search.
    [[nodiscard]] std::optional<Ended> listDirectory();
    [[nodiscard]] std::optional<Ended> openFile();

    const EntryList& Dirs_;
    HitList& hits_;
    const int directories_;
    State state_ = State::BetweenFiles;
    int directory_ = 0; // the entry reached, 1-based
    std::string path_;  // of that entry
    std::vector<std::string> files_;
    std::size_t file_ = 0; // the one reached next
    std::optional<FileReader> reader_;
    std::size_t offset_ = 0;
    std::vector<char> piece_;
    std::string what_;
    BlockSearch search_{what_};
};

} // namespace blockhouse
