#pragma once
// Every message box and question of the model goes through this interface: the desktop shows
// a modal box, the check command writes the text to standard error, tests script the answers.
#include <string>

namespace tv {

enum class Buttons { Ok, OkCancel, YesNo, YesNoCancel };
enum class Answer { Ok, Cancel, Yes, No };
enum class PromptIcon { None, Information, Question, Exclamation, Critical };

struct Prompt {
    std::string Text;  // Windows-1252; lines broken with CR, LF or CR LF as documented
    std::string Title; // "Tallyview" unless documented otherwise
    Buttons Choice = Buttons::Ok;
    PromptIcon Icon = PromptIcon::None;
    // The answer that ENTER gives; Cancel for the "Suspect file " warnings.
    Answer Default = Answer::Ok;
};

inline constexpr const char* AppTitle = "Tallyview";

class Prompts {
  public:
    virtual ~Prompts() = default;
    virtual Answer Ask(const Prompt& prompt) = 0;

    // A message with only an OK button and the program's title.
    void Tell(const std::string& text, PromptIcon icon = PromptIcon::None) {
        Ask(Prompt{text, AppTitle, Buttons::Ok, icon, Answer::Ok});
    }
};

} // namespace tv
