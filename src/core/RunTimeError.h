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
    // The line of the transcription being read when it happened; 0 when no line is concerned.
    int Line = 0;

    // The same error, naming the line of the transcription it happened in.
    RunTimeError InLine(int line) const {
        RunTimeError named = *this;
        named.Line = line;
        return named;
    }

    static RunTimeError Overflow() { return {6, "Overflow"}; }
    static RunTimeError SubscriptOutOfRange() { return {9, "Subscript out of range"}; }
    static RunTimeError DivisionByZero() { return {11, "Division by zero"}; }
};

// "Run-time error 6: Overflow in line 3": how a transcription refused for a run-time error is
// told, the same at a reload and by the check command.
inline std::string RefusalReason(const RunTimeError& error) {
    std::string text = "Run-time error " + std::to_string(error.Number) + ": " + error.what();
    if (error.Line > 0) text += " in line " + std::to_string(error.Line);
    return text;
}

// A file that cannot be opened or read; the text names the reason.
class FileError : public std::runtime_error {
  public:
    FileError(const std::string& path, const std::string& reason)
        : std::runtime_error(reason), Path(path), Reason(reason) {}
    std::string Path;
    std::string Reason;
};

} // namespace tv
