#include "FakePrompts.h"

namespace tv::test {

Answer FakePrompts::Ask(const Prompt& prompt) {
    Shown.push_back(prompt);
    if (!Script.empty()) {
        Answer a = Script.front();
        Script.pop_front();
        return a;
    }
    switch (prompt.Choice) {
    case Buttons::YesNo:
    case Buttons::YesNoCancel:
        return Answer::Yes;
    case Buttons::Ok:
    case Buttons::OkCancel:
        break;
    }
    return Answer::Ok;
}

std::vector<std::string> FakePrompts::Texts() const {
    std::vector<std::string> out;
    for (const auto& p : Shown)
        out.push_back(p.Text);
    return out;
}

} // namespace tv::test
