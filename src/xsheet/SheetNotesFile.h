#pragma once

#include "platform/Status.h"
#include "platform/files/Files.h"
#include "xsheet/Scene.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace velmor {

// What an xsheet has no place for stands in a text beside it, one line each: marks and comments of cells and
// frames, dialogue, how placed sounds are trimmed. What joins them is a kind of line of its own, with a row in the
// table of SheetNotesFile.cpp.

/// The bytes of the notes. `xsheet` is the hash of the xsheet that they go with.
std::vector<std::uint8_t> EncodeSheetNotes(const CScene& scene, std::uint64_t xsheet);

/// "key", "stop-hold"; "red". "none" for none.
std::string_view WordOf(SheetMark mark);
std::string_view WordOf(NoteColor color);

/// Whether such bytes hold anything: without it no file is needed.
bool HoldsSheetNotes(std::span<const std::uint8_t> bytes);

/// Gives a scene its notes. Those of cells and sounds that it has not are passed over, and lines of kinds
/// that are not known are kept. Fails for bytes that are no notes; `scene` is then unchanged.
CStatus DecodeSheetNotes(std::span<const std::uint8_t> bytes, CScene& scene);

/// The hash of the xsheet that notes go with.
std::optional<std::uint64_t> XSheetOfNotes(std::span<const std::uint8_t> bytes);

/// As DecodeSheetNotes(). Without a file there are none.
CStatus LoadSheetNotes(const Path& file, CScene& scene);

} // namespace velmor
