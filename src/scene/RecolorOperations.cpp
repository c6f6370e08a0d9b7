#include "scene/RecolorOperations.h"

#include "image/paint/ColorsUsed.h"
#include "scene/CommandState.h"
#include "scene/EditedImage.h"
#include "scene/SceneEdit.h"
#include "scene/Settings.h"
#include "scene/history/PaintingStep.h"
#include "scene/history/SceneFiles.h"

#include <algorithm>
#include <memory>
#include <new>

namespace velmor {

namespace {

constexpr int mostTolerance = 255;
constexpr std::size_t mostColorsOffered = 64;

} // namespace

SourceMode CRecolorOperations::Kind() const {
    return m_context.model.sourceMode == SourceMode::Pictures ? SourceMode::Pictures : SourceMode::Cels;
}

std::vector<Path> CRecolorOperations::ChosenFiles() const {
    const CSceneModel& model = m_context.model;
    std::vector<Path> files;
    if (model.sourceMode == Kind() && CanChangeImages(model))
        for (const std::string& name : model.sourceSelection)
            files.push_back(model.Paths().AssetFile(Kind(), model.folderName, name));
    return files;
}

std::vector<Path> CRecolorOperations::AllFiles() const {
    const CSceneModel& model = m_context.model;
    std::vector<Path> files;
    if (Kind() == SourceMode::Pictures) {
        for (const std::string& name : ListPictures(model.Paths()))
            files.push_back(model.Paths().AssetFile(Kind(), "", name));
    } else if (model.HasFolder()) {
        for (const std::string& name : ListCelTitles(model.Paths(), model.folderName))
            files.push_back(model.Paths().AssetFile(Kind(), model.folderName, name));
    }
    return files;
}

std::int64_t CRecolorOperations::ReplaceEdited(const CRecoloring& recoloring, const std::string& step) {
    CSceneModel& model = m_context.model;
    CCelImg& image = model.celImg;
    model.FinishPainting();
    const std::int64_t pixels = CountColor(image, recoloring);
    if (pixels == 0)
        return 0;
    try {
        CKeptTiles before;
        before.Keep(image, {0, 0, image.Width(), image.Height()});
        if (!m_context.Report(Recolor(image, recoloring).status))
            return 0;
        LeavePaintingStep(model, step, before);
    } catch (const std::bad_alloc&) {
        m_context.Show("Unable to allocate memory for cel!");
        return 0;
    }
    m_context.Update(UpdateHint::EditedImage);
    return pixels;
}

std::optional<std::int64_t> CRecolorOperations::Replace(std::span<const Path> files, const CRecoloring& recoloring,
                                                        const std::string& step) {
    std::int64_t pixels = 0;
    const std::optional<std::vector<CFileChange>> changes = Prepare(files, recoloring, pixels);
    if (!changes || (!changes->empty() && !Write(*changes, step)))
        return std::nullopt;
    return pixels;
}

std::optional<std::vector<CFileChange>>
CRecolorOperations::Prepare(std::span<const Path> files, const CRecoloring& recoloring, std::int64_t& pixels) {
    std::vector<CFileChange> changes;
    std::optional<std::string> failure;
    std::unique_ptr<IProgress> progress = m_context.prompter.BeginProgress("Replace Color");
    for (std::size_t done = 0; done < files.size(); ++done) {
        progress->Report(static_cast<int>(done * 100 / files.size()),
                         "Image " + std::to_string(done + 1) + " of " + std::to_string(files.size()));
        if (progress->TakeStopRequest())
            return std::nullopt;
        failure = PrepareOne(files[done], recoloring, changes, pixels);
        if (failure)
            break;
    }
    progress.reset(); // out of the way of the message
    if (!failure)
        return changes;
    m_context.Show(*failure);
    return std::nullopt;
}

std::optional<std::string> CRecolorOperations::PrepareOne(const Path& file, const CRecoloring& recoloring,
                                                          std::vector<CFileChange>& changes, std::int64_t& pixels) {
    CSceneModel& model = m_context.model;
    const auto failure = [&file](const std::string& reason) { return reason + "\n" + Utf8Of(file); };
    if (const CStatus saved = model.SaveEditedImage(file); !saved)
        return failure(saved.Message());
    try {
        const KeptFile before = KeepContents(file, mostKeptBytes);
        CCelImg image;
        if (const CStatus read = before ? image.LoadBytes(*before, file) : image.Load(file); !read)
            return failure(read.Message());
        const std::int64_t found = CountColor(image, recoloring);
        if (found == 0)
            return std::nullopt;
        if (const CPaintResult result = Recolor(image, recoloring); !result.status)
            return failure(result.status.Message());
        image.SetModified(false); // it is written below, with the others
        changes.push_back({model.SceneFile(file),
                           before,
                           std::make_shared<const std::vector<std::uint8_t>>(image.FileBytes()),
                           {}});
        pixels += found;
        return std::nullopt;
    } catch (const std::bad_alloc&) {
        return failure("Unable to allocate memory for cel!");
    }
}

bool CRecolorOperations::Write(const std::vector<CFileChange>& changes, const std::string& step) {
    CSceneModel& model = m_context.model;
    const Path folder = model.Paths().SceneFolder();
    std::vector<Path> files;
    files.reserve(changes.size());
    for (const CFileChange& change : changes)
        files.push_back(folder / PathOf(change.file));
    CSceneEdit edit(m_context, step, pictureHint | UpdateHint::AssetLists);
    edit.KeepFiles(files);
    if (const CStatus written = CSceneFiles(folder).Move(changes, ChangeDirection::Forward); !written) {
        edit.CallOff();
        m_context.Show(written.Message());
        return false;
    }
    if (std::ranges::find(files, model.celImg.FilePath()) != files.end()) {
        CEditedImage(m_context).ReadAgain();
        model.NoteEditedImage();
        edit.AlsoAnnounce(UpdateHint::EditedImage);
    }
    return true;
}

std::string CRecolorOperations::RepaintQuestion() const {
    const std::size_t chosen = ChosenFiles().size();
    if (chosen > 0)
        return "&Repaint what is painted with it in the chosen " +
               std::string(Kind() == SourceMode::Pictures ? "pictures" : "cels") + " (" + std::to_string(chosen) +
               ")";
    return HasEditedImage(m_context.model) ? "&Repaint what is painted with it in the drawing under edit" : "";
}

void CRecolorOperations::Repaint(CColor from, CColor to) {
    const std::vector<Path> chosen = ChosenFiles();
    CRecoloring recoloring;
    recoloring.from = from;
    recoloring.to = to;
    if (chosen.empty())
        static_cast<void>(ReplaceEdited(recoloring, "Repaint Color"));
    else
        static_cast<void>(Replace(chosen, recoloring, "Repaint Color")); // it has said what went wrong
}

void CRecolorOperations::AskAndReplace(std::optional<CColor> from) {
    CSceneModel& model = m_context.model;
    model.FinishPainting();
    const std::vector<Path> chosen = ChosenFiles();
    const std::vector<Path> all = AllFiles();
    const CCelImg& image = model.celImg;
    CReplaceColorRequest request;
    request.hasEdited = HasEditedImage(model);
    request.chosen = static_cast<int>(chosen.size());
    request.all = static_cast<int>(all.size());
    request.colors = NamedColorsOf(image, model.palette, mostColorsOffered);
    request.initial.recoloring = {
        from.value_or(model.paint.foreground), model.paint.foreground,
        std::clamp(Get(m_context.profile, setting::lastRecolorTolerance), 0, mostTolerance),
        static_cast<SelectWhat>(std::clamp(Get(m_context.profile, setting::lastRecolorWhat), 0, 2)),
        Get(m_context.profile, setting::lastRecolorKeepsAlpha) != 0};
    request.initial.where = request.hasEdited ? RecolorWhere::Edited
                            : !chosen.empty() ? RecolorWhere::Chosen
                                              : RecolorWhere::All;
    request.count = [&image](const CRecoloring& recoloring) { return CountColor(image, recoloring); };
    request.accept = [this](const CReplaceColorValues& values) {
        return m_context.Require(values.recoloring.tolerance >= 0 && values.recoloring.tolerance <= mostTolerance,
                                 "The tolerance must be a whole number from 0 to 255");
    };
    const std::optional<CReplaceColorValues> values = m_context.prompter.Ask(request);
    if (!values)
        return;
    Set(m_context.profile, setting::lastRecolorTolerance, values->recoloring.tolerance);
    Set(m_context.profile, setting::lastRecolorWhat, static_cast<int>(values->recoloring.what));
    Set(m_context.profile, setting::lastRecolorKeepsAlpha, values->recoloring.keepsAlpha ? 1 : 0);
    const std::optional<std::int64_t> pixels =
        values->where == RecolorWhere::Edited
            ? ReplaceEdited(values->recoloring)
            : Replace(values->where == RecolorWhere::Chosen ? chosen : all, values->recoloring);
    if (pixels == 0)
        m_context.Show("No pixel has this color.");
}

} // namespace velmor
