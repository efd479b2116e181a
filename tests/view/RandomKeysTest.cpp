// Thousands of random keys, with random SHIFT and ALT and random answers to any question, in
// every state of a session: nothing may escape the key handler but the program's documented
// run-time errors, and every other key returns to the window, consumed.
#include "PageSessionTesting.h"

#include <memory>
#include <random>

namespace tv::test {

namespace {

constexpr int KeysPerState = 1500;

enum class State { BeforeCalibration, Stage1, Stage2, Stage3, Stage4, Calibrated, AfterReload };

// A session of the 1878 page brought into one state, as the user would bring it there.
class StatedSession : public PageSession {
  public:
    void Enter(State state) {
        Load(BirthsPage1878(), GraphicsFile1878);
        if (state == State::BeforeCalibration) return;
        S.CalibrateTextbox();
        const int confirmed = state == State::AfterReload ? 4 : static_cast<int>(state) - 1;
        for (int i = 0; i < confirmed; ++i) {
            Press(KeyDown, true); // somewhere below the entry confirmed before
            Press(KeyEnter);
        }
        if (state == State::AfterReload) Press(KeyR);
    }

    bool InState(State state) const {
        const int16_t stage = S.Calib.CalibrationStage;
        switch (state) {
        case State::BeforeCalibration:
            return stage == 0 && !S.Calib.BoxLinedUp;
        case State::Calibrated:
        case State::AfterReload:
            return stage == 0 && S.Calib.BoxLinedUp;
        default:
            return stage == static_cast<int>(state);
        }
    }
};

struct Tally {
    int Pressed = 0;
    int Returned = 0;
    int RunTimeErrors = 0;
    int OtherEscapes = 0;
};

class RandomKeys : public ::testing::TestWithParam<State> {
  protected:
    std::mt19937 Random{20260611U};

    int Below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(Random); }

    std::unique_ptr<StatedSession> Fresh(State state) {
        auto session = std::make_unique<StatedSession>();
        session->Enter(state);
        EXPECT_TRUE(session->InState(state));
        session->F.Prompts.Shown.clear();
        return session;
    }

    void ScriptAnswers(FakePrompts& prompts) {
        static const Answer answers[] = {Answer::Ok, Answer::Cancel, Answer::Yes, Answer::No};
        prompts.Script.clear();
        for (int i = 0; i < 4; ++i)
            prompts.Script.push_back(answers[Below(4)]);
    }
};

bool Documented(const RunTimeError& e) {
    return e.Number == 6 || e.Number == 9 || e.Number == 11;
}

TEST_P(RandomKeys, OnlyDocumentedRunTimeErrorsEscapeAndEveryOtherKeyIsConsumed) {
    const State state = GetParam();
    Random.seed(20260611U + static_cast<unsigned>(state));
    std::unique_ptr<StatedSession> session = Fresh(state);
    Tally tally;
    for (int i = 0; i < KeysPerState; ++i) {
        ScriptAnswers(session->F.Prompts);
        const int code = Below(256);
        const bool shift = Below(2) == 1;
        const bool alt = Below(4) == 0;
        ++tally.Pressed;
        try {
            CommandOutcome outcome = session->S.Form_KeyDown(code, shift, alt);
            ++tally.Returned;
            if (!outcome.ExitProgram) continue;
        } catch (const RunTimeError& e) {
            ++tally.RunTimeErrors;
            EXPECT_TRUE(Documented(e)) << "key " << code << ": " << e.Number << " " << e.what();
        } catch (const std::exception& e) {
            ++tally.OtherEscapes;
            ADD_FAILURE() << "key " << code << " let out " << e.what();
        } catch (...) {
            ++tally.OtherEscapes;
            ADD_FAILURE() << "key " << code << " let out an unknown exception";
        }
        // The program would have ended here; the next user starts again in the same state.
        session = Fresh(state);
    }
    EXPECT_EQ(tally.OtherEscapes, 0);
    EXPECT_EQ(tally.Returned + tally.RunTimeErrors, tally.Pressed);
    EXPECT_GT(tally.Returned, KeysPerState * 9 / 10);
}

std::string StateName(const ::testing::TestParamInfo<State>& info) {
    static const char* const names[] = {
        "BeforeCalibration", "Stage1", "Stage2", "Stage3", "Stage4", "Calibrated", "AfterReload"};
    return names[static_cast<int>(info.param)];
}

INSTANTIATE_TEST_SUITE_P(EveryState, RandomKeys,
                         ::testing::Values(State::BeforeCalibration, State::Stage1, State::Stage2,
                                           State::Stage3, State::Stage4, State::Calibrated,
                                           State::AfterReload),
                         StateName);

} // namespace

} // namespace tv::test
