// The files of the lists that the user edits.
#pragma once

#include "platform/text/EntryList.h"
#include "shell/application_folder.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace blockhouse {

class NoticeArea;

class SavedLists {
public:
    explicit SavedLists(ApplicationFolder files) : files_(std::move(files)) {}

    // Sees to it that the list's file holds `entries`, which were `before` until they were edited. What another program
    // has written meanwhile stays while the list is unchanged, and is kept beside it otherwise. False when the list
    // could not be written. A notice tells of either.
    bool save(std::string_view name, const EntryList& entries, const EntryList& before, NoticeArea& notices);

private:
    ApplicationFolder files_;
    std::map<std::string, EntryList, std::less<>>
        failed_; // by name: what the file holds of a list that could not be written
};

} // namespace blockhouse
