// The data file preview: the beginning of the file last chosen with "View Data
// File", as raw text, so the user can see its title lines and units before loading.
#pragma once

#include <QString>
#include <QWidget>
#include <string>

class QPlainTextEdit;

namespace pemlo {

struct Declarations;
class FileChannels;

// At most this many characters of a file are shown.
constexpr int PreviewLimit = 56000;
// Follows the text of a file that had more to show.
inline const char* const MoreDataMarker = " [ + more data in file ] ";

// Opens DataFileName on channel FileNum and returns the text to show: the file's
// bytes but its last, at most PreviewLimit of them, then the marker if the limit was
// reached. The channel is closed on success; a failing step raises its run-time error
// and leaves the channel as it was (an empty file raises error 5).
std::string ReadPreview(const Declarations& d, FileChannels& files);

class Frm_ViewFile : public QWidget {
    Q_OBJECT
public:
    // The load step builds the whole preview; on failure it tells the user, and the
    // screen that asked for it closes it again instead of showing it.
    explicit Frm_ViewFile(QWidget* parent = nullptr);

    bool LoadSucceeded() const { return loaded_; }
    // The text as read, line breaks as they are in the file.
    const QString& Text() const { return text_; }

private:
    QPlainTextEdit* text1_ = nullptr;
    QString text_;
    bool loaded_ = false;
};

void RegisterFrm_ViewFile();

}  // namespace pemlo
