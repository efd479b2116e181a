#pragma once
// The run-time errors of the model. The program never clamps a 16-bit counter or an index
// silently: an overflow or an index out of range stops the operation with one of these, and
// the desktop reports it and ends the program.
#include <stdexcept>
#include <string>

namespace tv {

class RunTimeError : public std::runtime_error {
  public:
    RunTimeError(int number, const std::string& description)
        : std::runtime_error(description), Number(number) {}
    int Number;

    static RunTimeError Overflow() { return {6, "Overflow"}; }
    static RunTimeError SubscriptOutOfRange() { return {9, "Subscript out of range"}; }
    static RunTimeError DivisionByZero() { return {11, "Division by zero"}; }
};

// A file that cannot be opened or read; the text names the reason.
class FileError : public std::runtime_error {
  public:
    FileError(const std::string& path, const std::string& reason)
        : std::runtime_error(reason), Path(path), Reason(reason) {}
    std::string Path;
    std::string Reason;
};

} // namespace tv
