#pragma once

namespace velmor {

class CVelmorltDoc;
class IPrompter;

/// Opens the demonstration scene of the database, which is made first where there is none. False, after the
/// message, when that fails or when the user would rather stay in the open scene.
[[nodiscard]] bool OpenDemonstration(CVelmorltDoc& doc, IPrompter& prompter);

} // namespace velmor
