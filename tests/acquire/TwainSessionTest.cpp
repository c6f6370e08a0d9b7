#include "acquire/TwainSession.h"

#include "ScriptedSourceManager.h"

#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

using namespace twain;
using enum TwainState;
using Calls = std::vector<std::string>;

class CTwainSessionTest : public ::testing::Test {
protected:
    CTwainSessionTest() { manager.image = PackLineArt(8, 1, std::vector<std::uint8_t>{0xf0}); }

    /// Walks up to a state, as the operations do.
    void Reach(TwainState state) {
        if (state >= ManagerOpen) {
            ASSERT_TRUE(session.OpenSourceManager());
        }
        if (state >= SourceOpen) {
            ASSERT_TRUE(session.OpenSource());
        }
        if (state >= SourceEnabled) {
            ASSERT_TRUE(session.EnableSource());
        }
        if (state >= TransferReady) {
            manager.events = {MSG_XFERREADY};
            ASSERT_TRUE(session.ProcessEvent(nullptr));
        }
        if (state >= Transferring) {
            ASSERT_TRUE(session.TransferImage(Handler()));
        }
        ASSERT_EQ(session.State(), state);
        manager.TakeCalls();
    }
    ImageHandler Handler() {
        return [this](std::span<const std::uint8_t> page) { pages.emplace_back(page.begin(), page.end()); };
    }
    /// Events until there are none left; then the messages end.
    MessageStep Step() {
        return [this](const std::function<bool(void*)>& offer) {
            const bool hasMore = !manager.events.empty();
            offer(nullptr);
            return hasMore;
        };
    }

    CScriptedSourceManager manager;
    int window = 0;
    CTwainSession session{manager, &window};
    std::vector<PackedBitmap> pages;
};

const Calls opening = {"open manager", "open source", "enable"};
const Calls closing = {"disable", "close source", "close manager"};

Calls Sum(Calls first, const Calls& second, const Calls& third = {}) {
    first.insert(first.end(), second.begin(), second.end());
    first.insert(first.end(), third.begin(), third.end());
    return first;
}

} // namespace

TEST_F(CTwainSessionTest, OperationsWalkTheStatesUpAndDown) {
    EXPECT_EQ(session.State(), PreSession);
    EXPECT_TRUE(session.LoadSourceManager());
    EXPECT_EQ(session.State(), ManagerLoaded);
    Reach(Transferring);
    manager.pending = {2};
    EXPECT_TRUE(session.EndTransfer());
    EXPECT_EQ(session.State(), TransferReady) << "more images wait";
    EXPECT_TRUE(session.TransferImage(Handler()));
    EXPECT_TRUE(session.EndTransfer());
    EXPECT_EQ(session.State(), SourceEnabled);
    EXPECT_TRUE(session.DisableSource());
    EXPECT_EQ(session.State(), SourceOpen);
    EXPECT_TRUE(session.CloseSource());
    EXPECT_EQ(session.State(), ManagerOpen);
    EXPECT_TRUE(session.CloseSourceManager());
    EXPECT_EQ(session.State(), ManagerLoaded);
    EXPECT_TRUE(session.UnloadSourceManager());
    EXPECT_EQ(session.State(), PreSession);
    EXPECT_FALSE(manager.isLoaded);
    EXPECT_EQ(pages.size(), 2U);
    EXPECT_EQ(pages.front(), manager.image);
}

TEST_F(CTwainSessionTest, OperationsNeedTheirState) {
    const std::vector<std::pair<TwainState, std::function<bool(CTwainSession&)>>> operations = {
        {ManagerOpen, [](CTwainSession& s) { return s.OpenSource(); }},
        {SourceOpen, [](CTwainSession& s) { return s.EnableSource(); }},
        {SourceEnabled, [](CTwainSession& s) { return s.DisableSource(); }},
        {ManagerLoaded, [](CTwainSession& s) { return s.UnloadSourceManager(); }},
        {Transferring, [](CTwainSession& s) { return s.EndTransfer(); }},
        {TransferReady, [](CTwainSession& s) { return s.ResetTransfers(); }},
        {TransferReady, [this](CTwainSession& s) { return s.TransferImage(Handler()); }}};
    for (const TwainState state : {PreSession, ManagerOpen, SourceOpen, SourceEnabled, TransferReady}) {
        Reach(state);
        for (const auto& [needed, operation] : operations)
            if (needed != state) {
                EXPECT_FALSE(operation(session));
                EXPECT_EQ(session.State(), state);
            }
        EXPECT_EQ(manager.TakeCalls(), Calls{});
        ASSERT_TRUE(session.DropToState(PreSession));
    }
    EXPECT_FALSE(session.ProcessEvent(nullptr));
    EXPECT_TRUE(manager.seenMessages.size() == 1U) << "only on the way to a transfer";
}

TEST_F(CTwainSessionTest, DroppingTakesEveryStepFromWhereverItIs) {
    const Calls all = {"end transfer", "reset", "disable", "close source", "close manager"};
    for (int from = 3; from <= 7; ++from) {
        Reach(static_cast<TwainState>(from));
        manager.pending = {1}; // after the end of the transfer there is still one to give up
        EXPECT_TRUE(session.DropToState(PreSession));
        EXPECT_EQ(manager.TakeCalls(), Calls(all.begin() + (7 - from), all.end())) << from;
        EXPECT_FALSE(manager.isLoaded);
        manager.pending.clear();
    }
    Reach(SourceEnabled);
    EXPECT_TRUE(session.DropToState(SourceOpen));
    EXPECT_EQ(session.State(), SourceOpen);
    EXPECT_TRUE(session.DropToState(SourceEnabled)) << "lower already";
    EXPECT_EQ(manager.TakeCalls(), Calls{"disable"});
    EXPECT_TRUE(session.CloseSourceManager()) << "closes the source first";
    EXPECT_EQ(session.State(), ManagerLoaded);
}

TEST_F(CTwainSessionTest, AFailureLeavesTheStateAndStopsTheWayDown) {
    const std::vector<std::pair<std::string, TwainState>> steps = {{"disable", SourceEnabled},
                                                                   {"close source", SourceOpen},
                                                                   {"close manager", ManagerOpen},
                                                                   {"reset", TransferReady},
                                                                   {"end transfer", Transferring}};
    for (const auto& [name, state] : steps) {
        Reach(state);
        manager.answers = {{name, TWRC_FAILURE}};
        EXPECT_FALSE(session.DropToState(PreSession)) << name;
        EXPECT_EQ(session.State(), state) << name;
        EXPECT_EQ(session.ReturnCode(), TWRC_FAILURE);
        manager.answers.clear();
        EXPECT_TRUE(session.DropToState(PreSession)) << name;
    }
}

TEST_F(CTwainSessionTest, WithoutAnEntryPointNothingHappens) {
    manager.isInstalled = false;
    EXPECT_FALSE(session.LoadSourceManager());
    EXPECT_FALSE(session.OpenSourceManager());
    EXPECT_FALSE(session.SelectSource());
    EXPECT_FALSE(session.Acquire(Step(), Handler()));
    EXPECT_TRUE(session.DropToState(PreSession));
    EXPECT_EQ(session.State(), PreSession);
    EXPECT_EQ(manager.TakeCalls(), Calls{});
}

TEST_F(CTwainSessionTest, TheUserSelectsFromTheDefaultOn) {
    EXPECT_TRUE(session.SelectSource());
    EXPECT_EQ(session.State(), ManagerOpen);
    EXPECT_EQ(manager.TakeCalls(), (Calls{"open manager", "get default", "user select"}));
    manager.answers = {{"user select", TWRC_CANCEL}};
    EXPECT_FALSE(session.SelectSource());
    EXPECT_EQ(session.State(), ManagerOpen);
    manager.answers = {{"get default", TWRC_FAILURE}};
    EXPECT_TRUE(session.SelectSource()) << "nothing to open on is no reason not to choose";
    const std::string name = std::string(manager.application.productName) + manager.application.manufacturer +
                             manager.application.productFamily + manager.application.version.info;
    EXPECT_EQ(name.find("elmor"), std::string::npos);
}

TEST_F(CTwainSessionTest, AcquiringHandsOverEveryPageUntilTheWindowIsClosed) {
    manager.events = {MSG_NULL, MSG_XFERREADY, MSG_NULL, MSG_XFERREADY, MSG_CLOSEDSREQ, MSG_XFERREADY};
    manager.pending = {1, 1, 0, 0};
    EXPECT_TRUE(session.Acquire(Step(), Handler()));
    const Calls page = {"transfer", "end transfer"};
    EXPECT_EQ(manager.TakeCalls(), Sum(Sum(opening, Sum(page, page, page)), page, closing));
    EXPECT_EQ(pages.size(), 4U);
    EXPECT_EQ(manager.events.size(), 1U) << "not asked any more";
    EXPECT_EQ(session.State(), ManagerLoaded);
}

TEST_F(CTwainSessionTest, AcquiringComesDownFromWhateverFails) {
    for (const std::string step : {"open manager", "open source", "enable"})
        for (const std::uint16_t code : {TWRC_FAILURE, TWRC_CANCEL}) {
            manager.answers = {{step, code}};
            EXPECT_FALSE(session.Acquire(Step(), Handler())) << step;
            EXPECT_EQ(session.State(), ManagerLoaded) << step;
        }
    EXPECT_TRUE(pages.empty());
    manager.TakeCalls();

    // A cancelled image is ended like one that came, and the next one is asked for.
    manager.answers = {{"transfer", TWRC_CANCEL}};
    manager.events = {MSG_XFERREADY, MSG_CLOSEDSREQ};
    manager.pending = {1, 0};
    EXPECT_TRUE(session.Acquire(Step(), Handler()));
    const Calls page = {"transfer", "end transfer"};
    EXPECT_EQ(manager.TakeCalls(), Sum(opening, Sum(page, page), closing));

    // A failed one has not begun; the source stays for another try.
    manager.answers = {{"transfer", TWRC_FAILURE}};
    manager.events = {MSG_XFERREADY, MSG_XFERREADY, MSG_CLOSEDSREQ};
    EXPECT_TRUE(session.Acquire(Step(), Handler()));
    EXPECT_EQ(manager.TakeCalls(), Sum(opening, {"transfer", "reset", "transfer", "reset"}, closing));

    // A source that cannot even be reset is not asked for ever.
    manager.answers = {{"transfer", TWRC_FAILURE}, {"reset", TWRC_FAILURE}};
    manager.events = {MSG_XFERREADY, MSG_XFERREADY};
    EXPECT_TRUE(session.Acquire(Step(), Handler()));
    EXPECT_EQ(session.State(), TransferReady);
    EXPECT_TRUE(pages.empty());
}

TEST_F(CTwainSessionTest, MessagesEndingCloseTheSource) {
    manager.events = {};
    EXPECT_TRUE(session.Acquire(Step(), Handler()));
    EXPECT_EQ(manager.TakeCalls(), Sum(opening, closing));
}

TEST_F(CTwainSessionTest, ThePageOfAMessageLeavesTheOthersAlone) {
    // Several messages of one step: after the one that brings a page, the page comes first.
    manager.events = {MSG_XFERREADY, MSG_CLOSEDSREQ};
    const MessageStep step = [&](const std::function<bool(void*)>& offer) {
        EXPECT_TRUE(offer(&window));
        EXPECT_FALSE(offer(&pages));
        return true;
    };
    const MessageStep once = [&, isFirst = true](const std::function<bool(void*)>& offer) mutable {
        if (!std::exchange(isFirst, false))
            return Step()(offer);
        return step(offer);
    };
    EXPECT_TRUE(session.Acquire(once, Handler()));
    EXPECT_EQ(pages.size(), 1U);
    EXPECT_EQ(manager.seenMessages, (std::vector<void*>{&window, nullptr}));
}

TEST_F(CTwainSessionTest, MemoryThatCannotBeLockedIsHandedOverAsNothing) {
    manager.image.clear();
    manager.events = {MSG_XFERREADY, MSG_CLOSEDSREQ};
    EXPECT_TRUE(session.Acquire(Step(), Handler()));
    EXPECT_EQ(pages, std::vector<PackedBitmap>{{}});
    // So is a header that makes no sense.
    manager.image.assign(40, 0xff);
    manager.events = {MSG_XFERREADY, MSG_CLOSEDSREQ};
    EXPECT_TRUE(session.Acquire(Step(), Handler()));
    EXPECT_EQ(pages.size(), 2U);
    EXPECT_TRUE(pages.back().empty());
}

TEST_F(CTwainSessionTest, OpeningASourceReturnsToTheNativeTransfer) {
    Reach(SourceEnabled);
    session.UseFileTransfer();
    manager.events = {MSG_XFERREADY};
    session.ProcessEvent(nullptr);
    EXPECT_TRUE(session.TransferImage(Handler()));
    EXPECT_EQ(manager.TakeCalls(), Calls{"transfer file"});
    EXPECT_TRUE(session.DropToState(ManagerOpen));
    manager.TakeCalls();
    Reach(TransferReady);
    EXPECT_TRUE(session.TransferImage(Handler()));
    EXPECT_EQ(manager.TakeCalls(), Calls{"transfer"});
}

} // namespace velmor::testing
