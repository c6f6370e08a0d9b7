#include "scene/CleanupBatch.h"

#include "scene/AssetReferences.h"
#include "scene/SceneEdit.h"

#include <algorithm>
#include <utility>

namespace velmor {

namespace {

constexpr std::size_t mostTroublesShown = 10;

Path FileOf(const CSceneModel& model, const CCleanupOrder& order, const std::string& name) {
    return model.Paths().AssetFile(order.kind, order.folder, name);
}

} // namespace

std::string CountOfAssets(std::size_t count, std::size_t all, SourceMode kind) {
    const char* const one = kind == SourceMode::Pictures ? " picture" : " cel";
    return std::to_string(count) + " of " + std::to_string(all) + one + (all == 1 ? "" : "s");
}

std::string ListOfTroubles(const std::string& heading, const std::vector<std::string>& troubles) {
    std::string text = heading;
    for (std::size_t i = 0; i < std::min(troubles.size(), mostTroublesShown); ++i)
        text += "\n" + troubles[i];
    if (troubles.size() > mostTroublesShown)
        text += "\nand " + std::to_string(troubles.size() - mostTroublesShown) + " more";
    return text;
}

CStatus CCleanupBatch::Read(const CCleanupOrder& order, const std::string& name, CCelImg& image) const {
    const CCelImg& edited = m_context.model.celImg;
    const Path file = FileOf(m_context.model, order, name);
    if (edited.GetLoadState() == LoadState::Nothing || edited.FilePath() != file)
        return image.Load(file);
    image = edited;
    image.SetModified(false);
    return {};
}

CStatus CCleanupBatch::FindReference(const CCleanupOrder& order, std::optional<CPegReference>& reference) const {
    reference.reset();
    if (!order.cleanup.registers || order.reference.empty())
        return {};
    CCelImg image;
    CPegReference found;
    CStatus status = Read(order, order.reference, image);
    if (status)
        status = FindPegs(image, PegSearchOf(order.cleanup), found.pegs);
    if (!status)
        return CStatus::Failure("The reference, " + order.reference + ": " + status.Message());
    found.size = {image.Width(), image.Height()};
    reference = found;
    return {};
}

std::optional<std::vector<CCleanedAsset>> CCleanupBatch::Run(const CCleanupOrder& order) {
    std::optional<CPegReference> reference;
    if (!m_context.Report(FindReference(order, reference)))
        return std::nullopt;
    CSceneEdit edit(m_context, order.step, UpdateHint::None);
    std::vector<CCleanedAsset> cleaned = CleanAll(edit, order, reference);
    edit.End();
    Tell(order, cleaned);
    return cleaned;
}

std::vector<CCleanedAsset> CCleanupBatch::CleanAll(CSceneEdit& edit, const CCleanupOrder& order,
                                                   const std::optional<CPegReference>& reference) {
    std::vector<Path> files;
    for (const std::string& name : order.names)
        files.push_back(FileOf(m_context.model, order, name));
    edit.KeepFiles(files);
    std::vector<CCleanedAsset> cleaned;
    const std::unique_ptr<IProgress> progress = m_context.prompter.BeginProgress(order.step);
    for (const std::string& name : order.names) {
        progress->Report(static_cast<int>(cleaned.size() * 100 / order.names.size()), name);
        if (progress->TakeStopRequest())
            break;
        if (!CleanOne(edit, order, reference, cleaned.emplace_back(CCleanedAsset{name, {}, {}})))
            break;
    }
    return cleaned;
}

bool CCleanupBatch::CleanOne(CSceneEdit& edit, const CCleanupOrder& order,
                             const std::optional<CPegReference>& reference, CCleanedAsset& asset) {
    CSceneModel& model = m_context.model;
    const Path file = FileOf(model, order, asset.name);
    if (asset.status = model.SaveEditedImage(file); !asset.status)
        return false;
    CCelImg image;
    if (asset.status = image.Load(file); !asset.status)
        return true;
    if (asset.status = CleanUp(image, order.cleanup, reference, asset.done); !asset.status || !image.IsModified())
        return true;
    if (asset.status = image.Save(); !asset.status) {
        image.SetModified(false); // it would try once more
        return false;
    }
    edit.AlsoAnnounce(pictureHint | UpdateHint::AssetLists);
    if (model.celImg.FilePath() == file) {
        model.celImg = std::move(image);
        model.NoteEditedImage();
        edit.AlsoAnnounce(UpdateHint::EditedImage);
    }
    static_cast<void>(CAssetReferences(edit, model).Resize(ReferenceFolder(order.kind, order.folder), asset.name));
    return true;
}

void CCleanupBatch::Tell(const CCleanupOrder& order, const std::vector<CCleanedAsset>& cleaned) const {
    std::vector<std::string> failed, unregistered;
    for (const CCleanedAsset& asset : cleaned) {
        if (!asset.status)
            failed.push_back(Utf8Of(FileOf(m_context.model, order, asset.name)) + ": " + asset.status.Message());
        else if (!asset.done.registered)
            unregistered.push_back(asset.name + ": " + asset.done.registered.Message());
    }
    const std::size_t all = order.names.size();
    std::string text;
    if (!failed.empty())
        text = ListOfTroubles(CountOfAssets(failed.size(), all, order.kind) + " could not be cleaned up:", failed);
    if (!unregistered.empty())
        text += (text.empty() ? "" : "\n\n") +
                ListOfTroubles(CountOfAssets(unregistered.size(), all, order.kind) +
                                   " could not be put on their pegs and stay where they are:",
                               unregistered);
    if (!text.empty())
        m_context.Show(text);
}

} // namespace velmor
