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
#include <functional>
#include <vector>

#include "core/ui/Screens.h"

namespace pemlo::test {

struct SeenMessage {
    QString text;
    QString title;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
};

struct SeenFileDialog {
    QStringList nameFilters;
    bool fileMustExist = false;
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

// Runs an action on a screen the first time it is loaded and visible: for a modal
// screen, which holds the test inside the press that showed it until it is gone.
class WhenShown : public QObject {
public:
    WhenShown(ScreenId id, std::function<void(QWidget*)> action);
    bool Done() const { return done_; }

private:
    ScreenId id_;
    std::function<void(QWidget*)> action_;
    QTimer timer_;
    bool done_ = false;
};

// The one message a watcher saw, word for word, with its title and icon.
void ExpectOneMessage(const ModalWatcher& watcher, const QString& text, const QString& title, QMessageBox::Icon icon);

}  // namespace pemlo::test
