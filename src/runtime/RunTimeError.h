// The one error type of the program's run time: a number and its message, as the
// user sees them in "Run-time error 'N':" reports. Procedures raise it; the screens
// catch it only where their failure path says so, elsewhere it ends the program.
#pragma once

#include <stdexcept>
#include <string>

namespace pemlo {

// Error numbers the program can raise; their messages are in MessageOf().
enum ErrorNumber : int {
    ErrInvalidProcedureCall = 5,   // "Invalid procedure call or argument"
    ErrOverflow = 6,               // "Overflow"
    ErrOutOfMemory = 7,            // "Out of memory" (a file too large to hold, too)
    ErrSubscriptOutOfRange = 9,    // "Subscript out of range"
    ErrDivisionByZero = 11,        // "Division by zero"
    ErrTypeMismatch = 13,          // "Type mismatch"
    ErrBadFileNameOrNumber = 52,   // "Bad file name or number"
    ErrFileNotFound = 53,          // "File not found"
    ErrFileAlreadyOpen = 55,       // "File already open"
    ErrInputPastEndOfFile = 62,    // "Input past end of file"
    ErrTooManyFiles = 67,          // "Too many files"
    ErrPathFileAccess = 75,        // "Path/File access error"
    ErrCancelSelected = 32755,     // "Cancel was selected." (the file dialog's cancel)
};

// The platform's message for an error number ("Application-defined or object-defined
// error" for numbers it does not know).
std::string MessageOf(int number);

class RunTimeError : public std::runtime_error {
public:
    explicit RunTimeError(int number);
    RunTimeError(int number, std::string message);

    int Number() const noexcept { return number_; }
    const std::string& Message() const noexcept { return message_; }

private:
    int number_;
    std::string message_;
};

[[noreturn]] void Raise(int number);

}  // namespace pemlo
