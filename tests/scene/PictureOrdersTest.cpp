#include "scene/PictureOrders.h"

#include <gtest/gtest.h>

namespace velmor {
namespace {

using Time = CPictureOrders::Time;

/// Orders at times that a test chooses.
class PictureOrders : public ::testing::Test {
protected:
    bool Renew(int at, const CPictureSubject& subject = {}) { return orders.Renew(subject, Time(at)); }
    bool Follow(int at, const CPictureSubject& subject) { return orders.Follow(subject, Time(at)); }
    bool FollowUp(int at, const CPictureSubject& subject = {}) { return orders.FollowUp(subject, Time(at)); }
    bool Accept() { return orders.Accept(orders.Newest()); }
    static CPictureSubject Turned(double rotation) {
        CPictureSubject subject;
        subject.camera.rotation = rotation;
        return subject;
    }

    CPictureOrders orders;
};

TEST_F(PictureOrders, OneIsComposedAndTheNewestOfTheRestFollows) {
    EXPECT_TRUE(Follow(0, Turned(1)));
    EXPECT_FALSE(Follow(5, Turned(1))) << "nothing new";
    EXPECT_FALSE(Follow(10, Turned(2)));
    EXPECT_FALSE(Follow(20, Turned(3)));
    EXPECT_FALSE(FollowUp(25, Turned(3))) << "not before the first is there";
    EXPECT_TRUE(Accept());
    EXPECT_TRUE(FollowUp(30, Turned(3)));
    EXPECT_TRUE(orders.IsComposing());
    EXPECT_EQ(orders.Seen(), 1u) << "the last one stays meanwhile";
    EXPECT_TRUE(Accept());
    EXPECT_EQ(orders.Seen(), 2u);
    EXPECT_FALSE(FollowUp(40, Turned(3)));

    // What was moved and moved back meanwhile needs no picture, unless files may have changed.
    EXPECT_TRUE(Follow(50, Turned(4)));
    EXPECT_FALSE(Follow(51, Turned(5)));
    EXPECT_TRUE(Accept());
    EXPECT_FALSE(FollowUp(52, Turned(4)));
    EXPECT_TRUE(Renew(60, Turned(4)));
    EXPECT_FALSE(Renew(61, Turned(4)));
    EXPECT_FALSE(Follow(62, Turned(5))) << "does not take the place of what is told";
    EXPECT_TRUE(Accept());
    EXPECT_TRUE(FollowUp(63, Turned(4)));
    EXPECT_TRUE(Accept());
    EXPECT_TRUE(orders.IsOutspoken());
}

TEST_F(PictureOrders, WhatIsNotWaitedForIsDropped) {
    EXPECT_FALSE(orders.Accept(0)) << "nothing was ordered";
    EXPECT_TRUE(Renew(0));
    const unsigned first = orders.Newest();
    orders.Replace();
    EXPECT_FALSE(orders.Accept(first));
    EXPECT_TRUE(Accept());
    EXPECT_FALSE(Accept()) << "it is there already";

    EXPECT_TRUE(Renew(10));
    orders.Forget();
    EXPECT_FALSE(orders.IsComposing());
    EXPECT_FALSE(orders.Seen());
    EXPECT_FALSE(Accept()) << "the scene is closed";
}

TEST_F(PictureOrders, AnotherSceneOrSizeDropsWhatIsSeenAndUnderWay) {
    for (auto change : {+[](CPictureSubject& subject) { subject.scene = "Other"; },
                        +[](CPictureSubject& subject) { subject.folder = "/other/"; },
                        +[](CPictureSubject& subject) { ++subject.geometry.width; }}) {
        CPictureSubject other;
        change(other);
        ASSERT_TRUE(Renew(0));
        ASSERT_TRUE(Accept());
        ASSERT_FALSE(Follow(10, {}));
        ASSERT_TRUE(Renew(10));
        const unsigned late = orders.Newest();
        EXPECT_TRUE(Renew(20, other)) << "at once, though the other one is still composed";
        EXPECT_FALSE(orders.Seen());
        EXPECT_FALSE(orders.Accept(late));
        EXPECT_TRUE(Accept());
        orders.Forget();
    }
    ASSERT_TRUE(Follow(0, {}));
    ASSERT_TRUE(Accept());
    ASSERT_TRUE(Follow(1, Turned(1)));
    EXPECT_TRUE(orders.Seen()) << "the same scene";
}

TEST_F(PictureOrders, WaitingIsLateAfterAWhileAndDoesNotFlicker) {
    EXPECT_TRUE(Renew(0));
    EXPECT_EQ(orders.UntilLate(Time(40)), Time(60));
    EXPECT_FALSE(orders.Tick(Time(99)));
    EXPECT_FALSE(Renew(90)) << "has waited no shorter by it";
    EXPECT_TRUE(orders.Tick(Time(100)));
    EXPECT_TRUE(orders.IsLate());
    EXPECT_FALSE(orders.Tick(Time(300))) << "it is already";
    EXPECT_FALSE(orders.UntilLate(Time(300)));
    EXPECT_TRUE(Accept());
    EXPECT_TRUE(orders.IsLate()) << "the next one is waited for";
    EXPECT_TRUE(FollowUp(310));
    EXPECT_TRUE(Accept());
    EXPECT_FALSE(orders.IsLate());

    // What comes in time starts the wait anew.
    EXPECT_TRUE(Renew(1000));
    EXPECT_FALSE(Renew(1050));
    EXPECT_TRUE(Accept());
    EXPECT_TRUE(FollowUp(1080));
    EXPECT_FALSE(orders.Tick(Time(1150)));
    EXPECT_TRUE(Accept());
    // Nobody waits for what follows the mouse.
    EXPECT_TRUE(Follow(2000, Turned(1)));
    EXPECT_FALSE(orders.Tick(Time(9000)));
}

TEST_F(PictureOrders, APictureThatNeverComesIsGivenUp) {
    EXPECT_TRUE(Renew(0));
    EXPECT_FALSE(Renew(10000));
    EXPECT_TRUE(Renew(10001));
    EXPECT_FALSE(Renew(10002));
    EXPECT_FALSE(orders.Accept(1));
    EXPECT_TRUE(Accept());
}

TEST_F(PictureOrders, AFaultIsToldOnceUntilTheSceneIsOpenedAnew) {
    EXPECT_TRUE(Follow(0, {}));
    EXPECT_TRUE(Accept());
    EXPECT_FALSE(orders.IsOutspoken()) << "it follows the mouse";
    EXPECT_TRUE(Renew(1));
    EXPECT_TRUE(Accept());
    EXPECT_TRUE(orders.IsOutspoken());

    EXPECT_FALSE(orders.IsNews(1, ""));
    EXPECT_TRUE(orders.IsNews(2, "broken"));
    EXPECT_FALSE(orders.IsNews(3, "broken")) << "the same at the next frame";
    EXPECT_TRUE(orders.IsNews(4, "broken too"));
    orders.ForgetFaults();
    EXPECT_FALSE(orders.IsNews(4, "broken too")) << "this picture has been looked at";
    EXPECT_TRUE(orders.IsNews(5, "broken"));
}

} // namespace
} // namespace velmor
