// Answers the modal message boxes and file dialogs a screen opens while a test
// drives it, and records what they showed. Create one before the action that opens
// them; it watches until it is destroyed.
//
//   ModalWatcher watcher;
//   watcher.ChooseFile(path);                  // the next file dialog picks path
//   QTest::mouseClick(button, Qt::LeftButton);
//   ASSERT_EQ(watcher.Messages().size(), 1u);
//   EXPECT_EQ(watcher.Messages()[0].title, "Open File Error");
#pragma once

#include <QFileDialog>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <deque>
#include <vector>

namespace pemlo::test {

struct SeenMessage {
    QString text;
    QString title;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
};

struct SeenFileDialog {
    QString objectName;
    QStringList nameFilters;
    bool fileMustExist = false;
    QString answered;   // the path chosen, or empty when cancelled
    bool refused = false;  // the dialog would not take the path (for example a missing file)
};

class ModalWatcher : public QObject {
public:
    ModalWatcher();

    // Answers for the file dialogs to come, in order; a dialog with no answer left
    // is cancelled.
    void ChooseFile(const QString& path);
    void CancelFileDialog();

    // Message boxes are answered with their default button (OK).
    const std::vector<SeenMessage>& Messages() const { return messages_; }
    const std::vector<SeenFileDialog>& FileDialogs() const { return dialogs_; }

    // Turns the event loop until a message box has been seen (or the time is up).
    bool WaitForMessage(int timeoutMs = 2000);

private:
    void Poll();
    void Answer(QMessageBox* box);
    void Answer(QFileDialog* dialog);

    QTimer timer_;
    std::deque<QString> answers_;  // empty string: cancel
    std::vector<QPointer<QWidget>> handled_;
    std::vector<SeenMessage> messages_;
    std::vector<SeenFileDialog> dialogs_;
};

}  // namespace pemlo::test
