#pragma once
// Prompts for tests: records every message and question, answers from a script.
#include "core/Prompts.h"

#include <deque>
#include <string>
#include <vector>

namespace tv::test {

class FakePrompts : public Prompts {
  public:
    // Answers given in order; when the script runs out, Yes / OK (the first button).
    std::deque<Answer> Script;
    std::vector<Prompt> Shown;

    Answer Ask(const Prompt& prompt) override;

    // The texts shown, in order.
    std::vector<std::string> Texts() const;
};

} // namespace tv::test
