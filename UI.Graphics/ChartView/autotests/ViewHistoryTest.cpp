// The views a user walked through, as a browser walks its pages.
#include "ViewHistory.h"
#include "ViewFixture.h"

#include <vector>

namespace {

using Orv::Chart::ViewHistory;
using Orv::Chart::ViewState;
using viewtest::ViewFixture;

class ViewHistoryTest : public ViewFixture {
protected:
    // Home, then the views after each of `count` zooms about the plot's centre.
    std::vector<ViewState> views(int count)
    {
        std::vector<ViewState> all{ViewState::of(frames().pairs())};
        for (int i = 0; i < count; ++i) {
            ranges().zoom(plot().center(), 0.5);
            navigator.reload();
            all.push_back(ViewState::of(frames().pairs()));
        }
        return all;
    }
};

TEST_F(ViewHistoryTest, StepsBackAndForwardAndANewViewDropsThoseAhead)
{
    const std::vector<ViewState> v = views(3);
    ViewHistory history;
    history.reset(v[0]);
    history.push(v[0]);
    EXPECT_EQ(history.size(), 1u) << "the same view is no step";
    EXPECT_TRUE(history.back() == v[0]) << "nothing to step to: the current view";
    history.push(v[1]);
    history.push(v[2]);
    EXPECT_TRUE(history.back() == v[1]);
    EXPECT_TRUE(history.canGoForward());
    history.push(v[3]);
    EXPECT_FALSE(history.canGoForward());
    EXPECT_EQ(history.size(), 3u);
    EXPECT_TRUE(history.back() == v[1]);
    EXPECT_TRUE(history.forward() == v[3]);
    EXPECT_TRUE(history.forward() == v[3]);
}

TEST_F(ViewHistoryTest, AnAmendReplacesTheCurrentViewButNeverHome)
{
    const std::vector<ViewState> v = views(2);
    ViewHistory history;
    history.reset(v[0]);
    history.amend(v[1]);
    EXPECT_EQ(history.size(), 2u) << "Home stays";
    history.amend(v[2]);
    EXPECT_EQ(history.size(), 2u);
    EXPECT_TRUE(history.current() == v[2]);
    EXPECT_TRUE(history.back() == v[0]);
    EXPECT_TRUE(history.home() == v[0]);
}

TEST_F(ViewHistoryTest, AViewAppliedGivesBackItsRanges)
{
    const std::vector<ViewState> v = views(1);
    const std::vector<double> zoomed = settings();
    v[0].applyTo(frames().pairs());
    EXPECT_NE(settings(), zoomed);
    v[1].applyTo(frames().pairs());
    EXPECT_EQ(settings(), zoomed);
}

} // namespace
