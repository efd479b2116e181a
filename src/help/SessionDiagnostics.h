#pragma once
// The diagnostics panel's values for a session: the box, the scan view and the image as the
// session and its view hold them; the screen and the main window from the desktop.
#include "help/Diagnostics.h"
#include "session/Session.h"

namespace tv {

// screen and form in twips; form is the main window's place on the screen.
DiagnosticsInputs DiagnosticsOf(const Session& s, ScreenSize screen, const TwipsRect& form);

} // namespace tv
