#pragma once
// Virtual-key codes of the keys the main window's key table knows. The desktop turns its own key
// events into these codes, so the table reads the same keys on every platform.

namespace tv {

enum KeyCode : int {
    KeyBackspace = 8,
    KeyEnter = 13,
    KeyPageUp = 33,
    KeyPageDown = 34,
    KeyEnd = 35,
    KeyHome = 36,
    KeyLeft = 37,
    KeyUp = 38,
    KeyRight = 39,
    KeyDown = 40,
    KeyA = 65,
    KeyB = 66,
    KeyC = 67,
    KeyD = 68,
    KeyF = 70,
    KeyL = 76,
    KeyM = 77,
    KeyO = 79,
    KeyR = 82,
    KeyS = 83,
    KeyNum2 = 98,
    KeyNum4 = 100,
    KeyNum6 = 102,
    KeyNum8 = 104,
    KeyNumPlus = 107,
    KeyNumMinus = 109,
    KeyF1 = 112,
    KeyF3 = 114, // Next Disagreement: a key of its own, which no other command uses
    KeyF11 = 122,
    KeyF12 = 123,
    KeyPlus = 187,
    KeyMinus = 189,
};

} // namespace tv
