#include "support/ModalWatcher.h"

#include <QAbstractButton>
#include <QPushButton>
#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <algorithm>

#include <gtest/gtest.h>

namespace pemlo::test {

ModalWatcher::ModalWatcher()
{
    timer_.setInterval(5);
    connect(&timer_, &QTimer::timeout, this, &ModalWatcher::Poll);
    timer_.start();
}

void ModalWatcher::ChooseFile(const QString& path) { answers_.push_back(path); }

void ModalWatcher::CancelFileDialog() { answers_.push_back(QString()); }

void ModalWatcher::Poll()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (!widget->isVisible()) continue;
        const bool seen = std::any_of(handled_.begin(), handled_.end(),
                                      [widget](const QPointer<QWidget>& w) { return w == widget; });
        if (seen) continue;
        if (auto* box = qobject_cast<QMessageBox*>(widget)) {
            handled_.emplace_back(widget);
            Answer(box);
            return;  // one per turn: answering may open the next one
        }
        if (auto* dialog = qobject_cast<QFileDialog*>(widget)) {
            handled_.emplace_back(widget);
            Answer(dialog);
            return;
        }
    }
}

void ModalWatcher::Answer(QMessageBox* box)
{
    messages_.push_back(SeenMessage{box->text(), box->windowTitle(), box->icon()});
    QAbstractButton* button = box->defaultButton();
    if (button == nullptr) button = box->button(QMessageBox::Ok);
    button != nullptr ? button->click() : box->reject();
}

void ModalWatcher::Answer(QFileDialog* dialog)
{
    SeenFileDialog seen;
    seen.nameFilters = dialog->nameFilters();
    seen.fileMustExist = dialog->fileMode() == QFileDialog::ExistingFile;
    QString answer;
    if (!answers_.empty()) {
        answer = answers_.front();
        answers_.pop_front();
    }
    if (answer.isEmpty()) {
        dialog->reject();
    } else if (seen.fileMustExist && !QFileInfo::exists(answer)) {
        dialog->reject();  // the dialog would only warn and stay open: give up as a user would
    } else {
        // Typed into the file name box, as a user would: selectFile() leaves a focused
        // box alone on a real display.
        if (auto* box = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
            box->setText(answer);
        } else {
            dialog->selectFile(answer);
        }
        QMetaObject::invokeMethod(dialog, "accept", Qt::DirectConnection);
        if (dialog->isVisible()) dialog->reject();
    }
    dialogs_.push_back(seen);
}

WhenShown::WhenShown(ScreenId id, std::function<void(QWidget*)> action) : id_(id), action_(std::move(action))
{
    timer_.setInterval(5);
    connect(&timer_, &QTimer::timeout, this, [this] {
        Screens& screens = Screens::Instance();
        if (done_ || !screens.IsLoaded(id_) || !screens.Get(id_)->isVisible()) return;
        done_ = true;
        timer_.stop();
        action_(screens.Get(id_));
    });
    timer_.start();
}

void ExpectOneMessage(const ModalWatcher& watcher, const QString& text, const QString& title, QMessageBox::Icon icon)
{
    ASSERT_EQ(watcher.Messages().size(), 1u);
    EXPECT_EQ(watcher.Messages()[0].text, text);
    EXPECT_EQ(watcher.Messages()[0].title, title);
    EXPECT_EQ(watcher.Messages()[0].icon, icon);
}

}  // namespace pemlo::test
