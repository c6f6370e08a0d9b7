#include "scene/AssetTransforms.h"

#include "image/transform/Transforms.h"
#include "scene/AssetReferences.h"
#include "scene/CommandState.h"
#include "scene/DialogRequests.h"
#include "scene/SceneEdit.h"
#include "scene/Settings.h"
#include "scene/history/PaintingStep.h"

#include <algorithm>

namespace velmor {

namespace {

constexpr const char* imageNotRead = ":: Reading cel file ->";
constexpr int mostTolerance = 255;
constexpr int mostProcess = 2;

/// Counter-clockwise, as Rotate() takes it.
double DegreesOf(const CRotationValues& values) {
    switch (values.kind) {
    case RotationKind::Clockwise90:
        return -90;
    case RotationKind::CounterClockwise90:
        return 90;
    case RotationKind::HalfTurn:
        return 180;
    case RotationKind::Free:
        break;
    }
    return values.freeDegrees;
}

std::string PercentText(int percent) {
    return "Percent Complete " + std::to_string(percent) + " %";
}

} // namespace

void CAssetTransforms::RotateSelected() {
    const CSceneModel& model = m_context.model;
    if (!HasSelectedAssets(model) || model.sourceMode == SourceMode::Sounds ||
        !m_context.Require(model.sourceMode == SourceMode::Cels || model.sourceMode == SourceMode::Pictures,
                           "Internal Error : Invalid source show mode in OnAssetsRotatecels") ||
        !CanChangeImages(model))
        return;
    const std::optional<CRotationValues> values = m_context.prompter.Ask(CRotationRequest{});
    if (!values)
        return;
    const double degrees = DegreesOf(*values);
    ChangeSelected({"Rotate Cel(s) / Picture(s)", [degrees](CCelImg& image) { return Rotate(image, degrees); },
                    "\nInternal Error :: Rotating cel file ->", ":: Writing cel file ->"});
}

bool CAssetTransforms::CanFlip() const {
    const CSceneModel& model = m_context.model;
    return m_context.Require(model.sceneOpen, "Internal Error: Scene not open in OnAssetsFlip") &&
           m_context.Require(model.sourceMode != SourceMode::Sounds,
                             "Internal Error: Sound is shown in OnAssetsFlip") &&
           m_context.Require(model.sourceMode != SourceMode::Cels || !model.folderName.empty(),
                             "Internal Error: Folder not open in OnAssetsFlip") &&
           m_context.Require(!model.sourceSelection.empty(), "Internal Error: Nothing selected in OnAssetsFlip");
}

void CAssetTransforms::FlipSelected() {
    if (!CanFlip())
        return;
    const std::optional<FlipDirection> direction = m_context.prompter.Ask(CFlipRequest{});
    if (!direction)
        return;
    const bool horizontal = *direction == FlipDirection::Horizontal;
    ChangeSelected({"Flip Cel(s) / Picture(s)", horizontal ? FlipX : FlipY,
                    horizontal ? "\nInternal Error :: FlipX ->" : "\nInternal Error :: FlipY ->",
                    ":: Writing cel/picture file ->"});
}

std::optional<CColorKey> CAssetTransforms::AskColorKey(CColor color) {
    const CColorKeyValues initial{
        color, std::clamp(Get(m_context.profile, setting::lastColorKeyTolerance), 0, mostTolerance),
        std::clamp(Get(m_context.profile, setting::lastColorKeyProcess), 0, mostProcess), 0};
    const auto accept = [this](const CColorKeyValues& values) {
        return m_context.Require(values.tolerance >= 0 && values.tolerance <= mostTolerance,
                                 "The tolerance must be a whole number from 0 to 255");
    };
    const std::optional<CColorKeyValues> values = m_context.prompter.Ask(CColorKeyRequest{initial, accept});
    if (!values)
        return std::nullopt;
    Set(m_context.profile, setting::lastColorKeyTolerance, values->tolerance);
    Set(m_context.profile, setting::lastColorKeyProcess, values->process);
    return CColorKey{values->color, values->tolerance, static_cast<ColorKeyProcess>(values->process),
                     static_cast<ColorUnderKey>(values->underKey)};
}

void CAssetTransforms::ColorKeySelected() {
    const CSceneModel& model = m_context.model;
    if (!CanColorKey(model))
        return;
    if (const std::optional<CColorKey> key = AskColorKey(model.paint.background))
        ChangeSelected({"Color Key Picture(s)", [key = *key](CCelImg& image) { return ColorKey(image, key); },
                        "\nInternal Error :: ColorKey ->", ":: Writing cel/picture file ->"});
}

void CAssetTransforms::ColorKeyEdited(CColor key) {
    CCelImg& image = m_context.model.celImg;
    if (!m_context.Require(image.GetLoadState() == LoadState::Picture,
                           "Internal Error : no picture image loaded in CCelImg::ColorKey"))
        return;
    const std::optional<CColorKey> values = AskColorKey(key);
    if (!values)
        return;
    m_context.model.FinishPainting();
    CKeptTiles before;
    before.Keep(image, {0, 0, image.Width(), image.Height()});
    if (m_context.Report(ColorKey(image, *values))) {
        LeavePaintingStep(m_context.model, "Color Key", before);
        m_context.Update(UpdateHint::EditedImage);
    }
}

void CAssetTransforms::ChangeSelected(const CChange& change) {
    const std::vector<std::string> names = m_context.model.sourceSelection; // the views may change it meanwhile
    CSceneEdit edit(m_context, change.title, UpdateHint::None);
    std::vector<Path> files;
    for (const std::string& name : names)
        files.push_back(
            m_context.model.Paths().AssetFile(m_context.model.sourceMode, m_context.model.folderName, name));
    edit.KeepFiles(files);
    std::optional<std::string> failure;
    std::unique_ptr<IProgress> progress = m_context.prompter.BeginProgress(change.title);
    progress->Report(0, PercentText(0));
    for (std::size_t done = 0; done < names.size() && !failure && !progress->TakeStopRequest(); ++done) {
        failure = ChangeAsset(edit, names[done], change);
        const int percent = static_cast<int>((done + 1) * 100 / names.size());
        progress->Report(percent, PercentText(percent));
    }
    progress.reset(); // out of the way of the message
    edit.End();
    if (failure)
        m_context.Show(*failure);
}

std::optional<std::string> CAssetTransforms::ChangeAsset(CSceneEdit& edit, const std::string& name,
                                                         const CChange& change) {
    CSceneModel& model = m_context.model;
    const Path file = model.Paths().AssetFile(model.sourceMode, model.folderName, name);
    const auto failure = [&file](const CStatus& reason, const char* what) {
        return reason.Message() + what + Utf8Of(file);
    };
    if (const CStatus saved = model.SaveEditedImage(file); !saved)
        return failure(saved, change.notWritten);
    CCelImg image;
    if (const CStatus read = image.Load(file); !read)
        return failure(read, imageNotRead);
    if (const CStatus changed = change.apply(image); !changed)
        return failure(changed, change.notChanged);
    if (const CStatus written = image.Save(); !written)
        return failure(written, change.notWritten);
    if (model.celImg.FilePath() == file) {
        model.celImg = std::move(image);
        model.NoteEditedImage();
        edit.AlsoAnnounce(UpdateHint::EditedImage);
    }
    if (CAssetReferences(edit, model).Resize(ReferenceFolder(model.sourceMode, model.folderName), name) > 0)
        edit.AlsoAnnounce(pictureHint);
    return std::nullopt;
}

} // namespace velmor
