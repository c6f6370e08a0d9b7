#pragma once

#include <QPrinter>

namespace velmor {

class IPrompter;
struct CCameraAidChoices;
struct CSceneModel;

/// Prints the field chart, frames and safe areas of the scene's frame on one page, as large as it has room for: to
/// be laid under drawings. Where no guides are chosen, a chart of 12 fields with both safe areas. False, after a
/// message, when it could not be printed, and when there is no scene.
[[nodiscard]] bool PrintGuides(const CSceneModel& model, const CCameraAidChoices& choices, IPrompter& prompter,
                               QPrinter& printer);

} // namespace velmor
