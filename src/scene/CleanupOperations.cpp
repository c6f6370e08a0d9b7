#include "scene/CleanupOperations.h"

#include "image/clean/LineWeight.h"
#include "image/paint/Despeckle.h"
#include "scene/CommandState.h"
#include "scene/DialogRequests.h"
#include "scene/Settings.h"
#include "scene/history/PaintingStep.h"

#include <algorithm>
#include <new>

namespace velmor {

namespace {

constexpr int mostDpi = 4800;

CCleanupOrder OrderOf(const CCleanupRequest& request, const CCleanupValues& values, const std::string& folder) {
    CCleanupOrder order;
    order.kind = request.kind;
    order.folder = folder;
    order.names = values.all ? request.all : request.chosen;
    order.cleanup = values.cleanup;
    order.reference = values.reference;
    return order;
}

} // namespace

void CCleanupOperations::AskAndCleanUp() {
    m_context.model.FinishPainting();
    const CSceneModel& model = m_context.model;
    CCleanupRequest request;
    request.kind = model.sourceMode == SourceMode::Pictures ? SourceMode::Pictures : SourceMode::Cels;
    if (!m_context.Require(CanCleanUp(model), "Internal Error: No cels or pictures are shown to clean up"))
        return;
    request.all = request.kind == SourceMode::Pictures ? ListPictures(model.Paths())
                                                       : ListCelTitles(model.Paths(), model.folderName);
    if (!m_context.Require(!request.all.empty(), "There is nothing here to clean up."))
        return;
    for (const std::string& name : model.sourceSelection)
        if (std::ranges::find(request.all, name) != request.all.end())
            request.chosen.push_back(name);
    request.initial = Remembered();
    request.initial.all = request.chosen.empty();
    const std::string folder = model.folderName;
    request.preview = [&, folder](const CCleanupValues& values, const std::string& name) {
        return Preview(OrderOf(request, values, folder), name);
    };
    request.findPegs = [&, folder](const CCleanupValues& values, const std::string& name, CPegs& pegs) {
        CCelImg image;
        const CStatus read = CCleanupBatch(m_context).Read(OrderOf(request, values, folder), name, image);
        return read ? FindPegs(image, PegSearchOf(values.cleanup), pegs) : read;
    };
    request.accept = [&, folder](const CCleanupValues& values) { return Accept(OrderOf(request, values, folder)); };
    const std::optional<CCleanupValues> values = m_context.prompter.Ask(request);
    m_referenceOrder.reset();
    if (!values)
        return;
    Remember(*values);
    static_cast<void>(CCleanupBatch(m_context).Run(OrderOf(request, *values, folder))); // it has said what is wrong
}

bool CCleanupOperations::Accept(const CCleanupOrder& order) const {
    const CCleanup& cleanup = order.cleanup;
    const auto isWithin = [](int value, int least, int most) { return value >= least && value <= most; };
    std::optional<CPegReference> reference;
    return m_context.Require(isWithin(cleanup.threshold, 0, CCleanup::mostThreshold),
                             "The threshold must be a whole number from 0 to 255") &&
           m_context.Require(isWithin(cleanup.specks, 0, CCleanup::mostSpecks),
                             "The size of specks must be a whole number from 0 to 100") &&
           m_context.Require(isWithin(cleanup.weight, -mostLineWeightChange, mostLineWeightChange),
                             "Lines must be made thinner or thicker by a whole number from -8 to 8") &&
           m_context.Require(!cleanup.dpi || (*cleanup.dpi >= 1 && *cleanup.dpi <= mostDpi),
                             "The resolution must be a number from 1 to 4800, or 0 if it is not known") &&
           m_context.Require(!order.names.empty(), "No drawings are chosen.") &&
           m_context.Report(CCleanupBatch(m_context).FindReference(order, reference));
}

CCleanupPreview CCleanupOperations::Preview(const CCleanupOrder& order, const std::string& name) {
    const CCleanupBatch batch(m_context);
    const bool isKnown = m_referenceOrder && m_referenceOrder->reference == order.reference &&
                         m_referenceOrder->cleanup.registers == order.cleanup.registers &&
                         m_referenceOrder->cleanup.dpi == order.cleanup.dpi &&
                         m_referenceOrder->cleanup.threshold == order.cleanup.threshold;
    if (!isKnown) {
        m_referenceFound = batch.FindReference(order, m_reference);
        m_referenceOrder = order;
    }
    CCleanupPreview preview;
    preview.status = batch.Read(order, name, preview.before);
    if (!preview.status)
        return preview;
    preview.after = preview.before;
    CCleanup cleanup = order.cleanup;
    cleanup.registers = cleanup.registers && m_referenceFound;
    preview.status = CleanUp(preview.after, cleanup, m_reference, preview.done);
    preview.after.SetModified(false); // it is never saved
    if (!m_referenceFound)
        preview.done.registered = m_referenceFound;
    return preview;
}

CCleanupValues CCleanupOperations::Remembered() const {
    const CProfile& profile = m_context.profile;
    CCleanupValues values;
    CCleanup& cleanup = values.cleanup;
    cleanup.threshold = std::clamp(Get(profile, setting::cleanupThreshold), 0, CCleanup::mostThreshold);
    cleanup.specks = std::clamp(Get(profile, setting::cleanupSpecks), 0, CCleanup::mostSpecks);
    cleanup.weight = std::clamp(Get(profile, setting::cleanupWeight), -mostLineWeightChange, mostLineWeightChange);
    cleanup.straightens = Get(profile, setting::cleanupStraightens) != 0;
    cleanup.registers = Get(profile, setting::cleanupRegisters) != 0;
    cleanup.erasesPegs = Get(profile, setting::cleanupErasesPegs) != 0;
    if (const int dpi = Get(profile, setting::cleanupDpi); dpi > 0)
        cleanup.dpi = std::min(dpi, mostDpi);
    return values;
}

void CCleanupOperations::Remember(const CCleanupValues& values) {
    CProfile& profile = m_context.profile;
    const CCleanup& cleanup = values.cleanup;
    Set(profile, setting::cleanupThreshold, cleanup.threshold);
    Set(profile, setting::cleanupSpecks, cleanup.specks);
    Set(profile, setting::cleanupWeight, cleanup.weight);
    Set(profile, setting::cleanupStraightens, cleanup.straightens ? 1 : 0);
    Set(profile, setting::cleanupRegisters, cleanup.registers ? 1 : 0);
    Set(profile, setting::cleanupErasesPegs, cleanup.erasesPegs ? 1 : 0);
    Set(profile, setting::cleanupDpi, static_cast<int>(cleanup.dpi.value_or(0)));
}

void CCleanupOperations::DespeckleEdited() {
    const int remembered = Get(m_context.profile, setting::cleanupSpecks);
    const int specks =
        remembered > 0 ? std::min(remembered, CCleanup::mostSpecks) : setting::cleanupSpecks.defaultValue;
    ChangeEdited("Despeckle", [specks](CCelImg& image) {
        static_cast<void>(RemoveSpecks(image, specks, UnderSpecks::Surrounding));
        return CStatus();
    });
}

void CCleanupOperations::ThickenEdited() {
    ChangeEdited("Thicken Lines", [](CCelImg& image) { return ThickenLines(image, weightStep); });
}

void CCleanupOperations::ThinEdited() {
    ChangeEdited("Thin Lines", [](CCelImg& image) { return ThinLines(image, weightStep); });
}

void CCleanupOperations::ChangeEdited(const char* step, const std::function<CStatus(CCelImg&)>& change) {
    m_context.model.FinishPainting();
    CCelImg& image = m_context.model.celImg;
    if (!m_context.Require(image.GetLoadState() == LoadState::Cel, "Internal Error: No cel is open to change"))
        return;
    try {
        CKeptTiles before;
        before.Keep(image, {0, 0, image.Width(), image.Height()});
        const int changes = image.Changes();
        if (!m_context.Report(change(image)) || image.Changes() == changes)
            return;
        LeavePaintingStep(m_context.model, step, before);
    } catch (const std::bad_alloc&) {
        m_context.Show("Unable to allocate memory for cel!");
        return;
    }
    m_context.Update(UpdateHint::EditedImage);
}

} // namespace velmor
