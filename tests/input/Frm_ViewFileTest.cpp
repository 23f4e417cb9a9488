// The data file preview: what it shows of files of every size, that each "View Data
// File" replaces the earlier preview, and its failures.
#include <QPlainTextEdit>
#include <QPushButton>

#include "input/Frm_OpenFile.h"
#include "input/Frm_ViewFile.h"
#include "runtime/RunTimeError.h"
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
        Find<QPushButton>(screens().Get(ScreenId::Frm_OpenFile), "CmdViewFile")->click();
        return screens().IsLoaded(ScreenId::Frm_ViewFile) ? screens().GetAs<Frm_ViewFile>(ScreenId::Frm_ViewFile)
                                                          : nullptr;
    }
};

// One preview after another from the same open-file screen, each replacing the last.
TEST_F(ViewFileTest, ShowsAllButTheLastByteUpToTheLimit)
{
    const std::string marker = " [ + more data in file ] ";  // word for word, blanks included
    const std::string lines = Bytes(998) + "\r\n";
    const struct {
        const char* what;
        std::string file;
        QString expected;
    } cases[] = {
        {"one byte", "x", ""},
        {"1000 bytes ending in CR LF", lines, QString::fromStdString(lines.substr(0, 999))},
        {"56000 bytes", Bytes(56000), QString::fromStdString(Bytes(55999))},
        {"56001 bytes", Bytes(56001), QString::fromStdString(Bytes(56000) + marker)},
        {"200000 bytes", Bytes(200000), QString::fromStdString(Bytes(56000) + marker)},
        {"Windows-1252 text", "\x80 5\xB0 \xE9t\xE9!", QString::fromUtf8("\u20AC 5\u00B0 \u00E9t\u00E9")},
    };
    QPointer<Frm_ViewFile> previous;
    for (const auto& c : cases) {
        ModalWatcher watcher;
        const QString path = WriteFile(QString::fromLatin1(c.what), c.file);
        Frm_ViewFile* preview = View(path, watcher);
        ASSERT_NE(preview, nullptr) << c.what;
        Settle();
        EXPECT_TRUE(previous.isNull()) << c.what;
        previous = preview;
        EXPECT_TRUE(watcher.Messages().empty()) << c.what;
        EXPECT_EQ(preview->windowTitle(), path);
        EXPECT_EQ(preview->Text(), c.expected) << c.what;
        // The text box shows line ends as its own paragraph breaks.
        QString shown = c.expected;
        shown.replace("\r\n", "\n").replace('\r', '\n');
        EXPECT_EQ(Find<QPlainTextEdit>(preview, "Text1")->toPlainText(), shown) << c.what;
        EXPECT_FALSE(ProgramChannels().IsOpen(TheRecord().FileNum)) << c.what;
    }
}

TEST_F(ViewFileTest, EmptyFileFailsAndIsNotShown)
{
    ModalWatcher watcher;
    EXPECT_EQ(View(WriteFile("empty.txt", ""), watcher), nullptr);
    ASSERT_EQ(watcher.Messages().size(), 1u);
    EXPECT_EQ(watcher.Messages()[0].text, "Could not read data from file");
    EXPECT_EQ(watcher.Messages()[0].title, "Open File Error");
    EXPECT_EQ(watcher.Messages()[0].icon, QMessageBox::Critical);
    // The failure path leaves the channel open, as the file procedures do.
    EXPECT_TRUE(ProgramChannels().IsOpen(TheRecord().FileNum));
    EXPECT_FALSE(screens().HasEnded());
}

// A file that went away between the choice and the preview.
TEST_F(ViewFileTest, MissingFileRaisesAndLeavesNoChannelOpen)
{
    Declarations d;
    d.DataFileName = WriteFile("gone.txt", "x").toStdString() + ".missing";
    d.FileNum = 3;
    FileChannels files;
    try {
        ReadPreview(d, files);
        FAIL() << "a missing file must raise";
    } catch (const RunTimeError& e) {
        EXPECT_EQ(e.Number(), ErrFileNotFound);
    }
    EXPECT_EQ(files.OpenCount(), 0);
}

}  // namespace
}  // namespace pemlo
