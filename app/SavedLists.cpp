#include "app/SavedLists.h"

#include "platform/system/files.h"
#include "platform/text/paths.h"
#include "platform/widgets/NoticeArea.h"
#include "platform/widgets/qt_text.h"
#include "shell/list_file.h"

#include <QCoreApplication>

namespace blockhouse {
namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("SavedLists", text);
}

ListSave saveTakes(std::string_view name, const std::string& path, const EntryList& entries, const EntryList& before) {
    Result<std::string> file = readWholeFile(path, largestListFile);
    if (file)
        return listSave(entries, before, listTextFrom(name, std::move(file).value()));
    if (!stampOf(path))
        return ListSave::Write;
    return entries == before ? ListSave::Nothing : ListSave::KeepTheOther; // it cannot be read
}

} // namespace

bool SavedLists::save(std::string_view name, const EntryList& entries, const EntryList& before, NoticeArea& notices) {
    const std::string path = files_.writePath(name);
    const auto failed = failed_.find(name);
    const ListSave how = saveTakes(name, path, entries, failed == failed_.end() ? before : failed->second);
    if (how == ListSave::Nothing)
        return true;
    constexpr FileStamp nobodys; // of no state of any file
    const auto known = how == ListSave::KeepTheOther ? std::optional(nobodys) : std::nullopt;
    const Result<Replaced> written = replaceKnownFile(path, listBytesOf(name, writtenList(entries)), known);
    const QString topic = QString::fromStdString(std::string(name));
    if (!written) {
        failed_.try_emplace(std::string(name), before);
        notices.tell(topic, tr("\"%1\" could not be written (%2): the list holds until the program ends.")
                                .arg(displayed(path), QString::fromStdString(written.error().cause)));
        return false;
    }
    if (failed != failed_.end())
        failed_.erase(failed);
    notices.withdraw(topic);
    if (const std::string& backup = written.value().backup; !backup.empty())
        notices.tell(topic,
                     tr("\"%1\" had been changed by another program. That list is kept as \"%2\".")
                         .arg(topic, displayed(LastPathPart(backup))),
                     displayed(backup));
    return true;
}

} // namespace blockhouse
