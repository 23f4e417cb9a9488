#include "runtime/RunTimeError.h"

namespace pemlo {

std::string MessageOf(int number)
{
    switch (number) {
    case ErrInvalidProcedureCall: return "Invalid procedure call or argument";
    case ErrOverflow: return "Overflow";
    case ErrOutOfMemory: return "Out of memory";
    case ErrSubscriptOutOfRange: return "Subscript out of range";
    case ErrDivisionByZero: return "Division by zero";
    case ErrTypeMismatch: return "Type mismatch";
    case ErrBadFileNameOrNumber: return "Bad file name or number";
    case ErrFileNotFound: return "File not found";
    case ErrFileAlreadyOpen: return "File already open";
    case ErrInputPastEndOfFile: return "Input past end of file";
    case ErrTooManyFiles: return "Too many files";
    case ErrPathFileAccess: return "Path/File access error";
    case ErrCancelSelected: return "Cancel was selected.";
    default: return "Application-defined or object-defined error";
    }
}

RunTimeError::RunTimeError(int number) : RunTimeError(number, MessageOf(number)) {}

RunTimeError::RunTimeError(int number, std::string message)
    : std::runtime_error("Run-time error '" + std::to_string(number) + "': " + message),
      number_(number), message_(std::move(message))
{
}

void Raise(int number) { throw RunTimeError(number); }

}  // namespace pemlo
