#include "app/Program.h"
#include "platform/system/folders.h"
#include "platform/widgets/qt_text.h"
#include "shell/artwork.h"

#include <QApplication>
#include <QStandardPaths>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("blockhouse"));
    QApplication::setDesktopFileName(QStringLiteral("blockhouse"));
    QApplication::setWindowIcon(blockhouse::applicationIcon());
    // The main window alone ends the program; between the splash window and it there may be no window at all.
    QApplication::setQuitOnLastWindowClosed(false);

    const QString programFolder = QApplication::applicationDirPath();
    blockhouse::Program program(blockhouse::applicationFolderOf(
        blockhouse::pathOf(programFolder), blockhouse::takesNewFiles(blockhouse::pathOf(programFolder)),
        blockhouse::pathOf(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))));
    program.start();
    return QApplication::exec();
}
