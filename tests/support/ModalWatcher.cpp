#include "support/ModalWatcher.h"

#include <QAbstractButton>
#include <QPushButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <algorithm>

namespace pemlo::test {

ModalWatcher::ModalWatcher()
{
    timer_.setInterval(5);
    connect(&timer_, &QTimer::timeout, this, &ModalWatcher::Poll);
    timer_.start();
}

void ModalWatcher::ChooseFile(const QString& path) { answers_.push_back(path); }

void ModalWatcher::CancelFileDialog() { answers_.push_back(QString()); }

bool ModalWatcher::WaitForMessage(int timeoutMs)
{
    const std::size_t before = messages_.size();
    QElapsedTimer clock;
    clock.start();
    while (messages_.size() == before && clock.elapsed() < timeoutMs) {
        QApplication::processEvents(QEventLoop::AllEvents, 10);
    }
    return messages_.size() > before;
}

void ModalWatcher::Poll()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (!widget->isVisible()) {
            continue;
        }
        const bool seen = std::any_of(handled_.begin(), handled_.end(),
                                      [widget](const QPointer<QWidget>& w) { return w == widget; });
        if (seen) {
            continue;
        }
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
    if (button == nullptr) {
        button = box->button(QMessageBox::Ok);
    }
    if (button != nullptr) {
        button->click();
    } else {
        box->reject();
    }
}

void ModalWatcher::Answer(QFileDialog* dialog)
{
    SeenFileDialog seen;
    seen.objectName = dialog->objectName();
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
        // The dialog would only warn and stay open: give up as a user would.
        seen.refused = true;
        dialog->reject();
    } else {
        // Typed into the file name box, as a user would: selectFile() leaves a focused
        // box alone on a real display.
        if (auto* box = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
            box->setText(answer);
        } else {
            dialog->selectFile(answer);
        }
        QMetaObject::invokeMethod(dialog, "accept", Qt::DirectConnection);
        if (dialog->isVisible()) {
            seen.refused = true;
            dialog->reject();
        } else {
            seen.answered = answer;
        }
    }
    dialogs_.push_back(seen);
}

}  // namespace pemlo::test
