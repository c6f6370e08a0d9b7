#pragma once

#include "platform/Status.h"
#include "xsheet/Dialogue.h"

#include <string>
#include <string_view>

namespace velmor {

/// A text, or a speaker, as a line of dialogue can have it: without what cannot be seen, and not too long; no
/// character is cut in two.
std::string SpokenText(std::string_view text);

/// Dialogue as a text: a line each, "12-25 Ann: Hello", with frames from 1; "12 Ha" stands at one frame alone.
std::string WriteDialogueText(const CDialogue& dialogue);

/// Reads such a text, of UTF-8 or Windows-1252, into `dialogue`, over what is there. A text of which no line has
/// frames is spread over those from `firstFrame` to `lastFrame`, each of its lines over as many as it has letters
/// in proportion. Fails with the line that cannot be read, or has no frame; `dialogue` is then as it was.
CStatus ReadDialogueText(std::string_view text, int firstFrame, int lastFrame, CDialogue& dialogue);

/// What of a line's text is spoken at a frame of it: as many of its characters as are due there, maybe none.
std::string SpokenAt(const CSpokenLine& line, int frame);

} // namespace velmor
