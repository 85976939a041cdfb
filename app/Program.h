// The composition root: makes the windows and connects one subsystem's wishes to another's abilities.
#pragma once

#include "app/ClosedTexts.h"
#include "app/SavedLists.h"
#include "editor/EditorHost.h"
#include "platform/text/EntryList.h"
#include "shell/application_folder.h"

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QStringList>

#include <memory>
#include <string>

namespace blockhouse {

class Form1;
class Form2;
class Fr_Directory;
class fr_edit;
class fr_findref;
class Fr_main;
class Fr_options;
class Splash;

class Program : public QObject, private EditorHost {
    Q_OBJECT

public:
    // The folder that holds the list files.
    explicit Program(std::string applicationFolder);
    explicit Program(ApplicationFolder files);
    ~Program() override;

    // Shows the splash window, which leads to the main window.
    void start();

    // The single windows, each made when first asked for, all but the main window anew after they were closed; neither
    // loaded nor shown by that.
    [[nodiscard]] Fr_main& fr_main();
    [[nodiscard]] Fr_Directory& fr_directory();
    [[nodiscard]] Fr_options& fr_options();
    [[nodiscard]] class fr_findref& fr_findref();
    [[nodiscard]] Form1& form1();
    [[nodiscard]] Form2& form2();

    // Opens a new editor window on the file. Startout is the position of a place in it. Serves events. Null when the
    // window has been closed meanwhile.
    fr_edit* openEditor(const std::string& path, TextPosition Startout = notFound);

    // The directories the user works in.
    EntryList Dirs;

private:
    // A new one inside the main window, in front, without a file yet.
    [[nodiscard]] fr_edit& addEditor();
    void reopenClosedText();
    void reopenEditor(ClosedText text);
    void keepClosedText(ClosedTexts::Closed text);
    void tellClosedTexts();
    void tellGone(const QString& path, const QString& name);
    [[nodiscard]] QRect roomForEditor(const QRect& area) const;
    void connectMainWindow();
    void openHit(const std::string& path, TextPosition position, const std::string& text);
    template <typename Window, typename Make>
    Window& single(QPointer<Window>& window, Make make);
    void drawProgress(PictureBox& box, double value, double maximum) override;
    void windowOpened(WindowHandle window, const QString& caption) override;
    void windowClosed(WindowHandle window) override;
    void unsavedTextChanged(WindowHandle window, bool unsaved) override;
    void unsavedTextClosed(ClosedText text) override;
    const EntryList& jumps() const override;
    bool explorerVisible() const override;
    void setExplorerVisible(bool visible) override;
    void countCharacters(std::string_view text) override;
    void findReferences(std::string_view text, CaretPosition caret) override;

    ApplicationFolder files_;
    SavedLists lists_;
    QPointer<Splash> splash_;
    std::unique_ptr<Fr_main> fr_main_;
    QPointer<Fr_Directory> fr_directory_;
    QPointer<Fr_options> fr_options_;
    QPointer<class fr_findref> fr_findref_;
    QPointer<Form1> form1_;
    QPointer<Form2> form2_;
    ClosedTexts closedTexts_;

    struct Gone {
        QStringList names;
        QStringList paths;
    };

    Gone gone_; // in the notice about them
    bool directoriesAreOnDisk_ = true;
};

} // namespace blockhouse
