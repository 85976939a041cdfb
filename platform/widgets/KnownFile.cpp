#include "platform/widgets/KnownFile.h"

#include "platform/system/files.h"
#include "platform/text/paths.h"
#include "platform/widgets/NoticeArea.h"
#include "platform/widgets/qt_text.h"

#include <QCoreApplication>

namespace blockhouse {
namespace {

const auto onDisk = QStringLiteral("fileChanged");
const auto keptBeside = QStringLiteral("backup");

QString tr(const char* text) {
    return QCoreApplication::translate("KnownFile", text);
}

} // namespace

void KnownFile::is(const std::optional<FileStamp>& state, NoticeArea& notices) {
    known_ = state;
    seen_ = state;
    notices.withdraw(onDisk);
}

bool KnownFile::look(const std::string& path, NoticeArea& notices) {
    const std::optional<FileStamp> state = stampOf(path);
    if (state == seen_)
        return false;
    seen_ = state;
    const QString name = displayed(LastPathPart(path));
    if (state == known_)
        notices.withdraw(onDisk);
    else if (state)
        notices.tell(onDisk,
                     tr("\"%1\" was changed on the disk since it was read here, by another program or window. "
                        "Save writes this text and keeps the other one beside it as a .bak file.")
                         .arg(name),
                     displayed(path));
    else
        notices.tell(onDisk, tr("\"%1\" is no longer on the disk. Save writes it again.").arg(name), displayed(path));
    return true;
}

void tellBackup(const std::string& backup, NoticeArea& notices) {
    if (backup.empty())
        return notices.withdraw(keptBeside);
    notices.tell(keptBeside,
                 tr("The file had been changed by another program or window. That text is kept as \"%1\".")
                     .arg(displayed(LastPathPart(backup))),
                 displayed(backup));
}

} // namespace blockhouse
