// The data file preview: what it shows of files of every size, that each "View Data
// File" replaces the earlier preview, and its failures.
#include <QPlainTextEdit>
#include <QPushButton>

#include "input/ui/Frm_OpenFile.h"
#include "input/ui/Frm_ViewFile.h"
#include "support/ModalWatcher.h"
#include "support/ScreenFixture.h"

namespace pemlo {
namespace {

using test::ModalWatcher;

std::string Bytes(std::size_t count)
{
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i) bytes += static_cast<char>('a' + i % 26);
    return bytes;
}

class ViewFileTest : public test::ScreenFixture {
protected:
    Frm_ViewFile* View(const QString& path, ModalWatcher& watcher)
    {
        screens().Show(ScreenId::Frm_OpenFile);
        watcher.ChooseFile(path);
        Press(screens().Get(ScreenId::Frm_OpenFile), "CmdViewFile");
        return screens().IsLoaded(ScreenId::Frm_ViewFile) ? screens().GetAs<Frm_ViewFile>(ScreenId::Frm_ViewFile)
                                                          : nullptr;
    }
};

// One preview after another from the same open-file screen, each replacing the last;
// an empty file, last, fails with the reader's message and is not shown.
TEST_F(ViewFileTest, ShowsAllButTheLastByteUpToTheLimit)
{
    const std::string marker = " [ + more data in file ] ";  // word for word, blanks included
    const std::string lines = Bytes(998) + "\r\n";
    const std::pair<std::string, QString> cases[] = {  // file, preview
        {"x", ""},
        {lines, QString::fromStdString(lines.substr(0, 999))},  // ends in CR LF
        {Bytes(56000), QString::fromStdString(Bytes(55999))},
        {Bytes(56001), QString::fromStdString(Bytes(56000) + marker)},
        {Bytes(200000), QString::fromStdString(Bytes(56000) + marker)},
        {"\x80 5\xB0 \xE9t\xE9!", QString::fromUtf8("\u20AC 5\u00B0 \u00E9t\u00E9")},  // Windows-1252
        {"", ""},
    };
    QPointer<Frm_ViewFile> previous;
    for (const auto& [file, expected] : cases) {
        SCOPED_TRACE(file.size());
        ModalWatcher watcher;
        const QString path = WriteFile(QString::number(file.size()) + ".txt", file);
        Frm_ViewFile* preview = View(path, watcher);
        if (file.empty()) {
            EXPECT_EQ(preview, nullptr);
            test::ExpectOneMessage(watcher, "Could not read data from file", "Open File Error", QMessageBox::Critical);
            // The failure path leaves the channel open, as the file procedures do.
            EXPECT_TRUE(ProgramChannels().IsOpen(TheRecord().FileNum));
            EXPECT_FALSE(screens().HasEnded());
            break;
        }
        ASSERT_NE(preview, nullptr);
        Settle();
        EXPECT_TRUE(previous.isNull());
        previous = preview;
        EXPECT_TRUE(watcher.Messages().empty());
        EXPECT_EQ(preview->windowTitle(), path);
        EXPECT_EQ(preview->Text(), expected);
        // The text box shows line ends as its own paragraph breaks.
        QString shown = expected;
        shown.replace("\r\n", "\n").replace('\r', '\n');
        EXPECT_EQ(Find<QPlainTextEdit>(preview, "Text1")->toPlainText(), shown);
        EXPECT_FALSE(ProgramChannels().IsOpen(TheRecord().FileNum));
    }
}

}  // namespace
}  // namespace pemlo
