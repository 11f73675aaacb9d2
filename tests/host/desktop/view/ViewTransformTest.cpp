// The mapping between drawing and pixels. (The overlay vectors: the drawing view's tests.)
#include <gtest/gtest.h>

#include "host/desktop/view/viewtransform.h"

namespace {

void expectNear(ScenePoint actual, ScenePoint expected) {
    EXPECT_NEAR(actual.x, expected.x, 1e-9);
    EXPECT_NEAR(actual.y, expected.y, 1e-9);
}

TEST(ViewTransform, WorldYGoesUpPixelsGoDown) {
    const ViewTransform view({10, 20}, 2.0, QSize(100, 50));
    EXPECT_EQ(view.toScreen({10, 20}), QPointF(50, 25));
    EXPECT_EQ(view.toScreen({11, 21}), QPointF(52, 23));
    expectNear(view.toWorld({0, 0}), {-15, 32.5});
    const SceneRect visible = view.visibleWorld();
    EXPECT_EQ(visible, (SceneRect{-15, 7.5, 35, 32.5}));
    const SceneTransform t = view.worldToScreen();
    const ScenePoint p = t.map({11, 21});
    EXPECT_EQ(QPointF(p.x, p.y), QPointF(52, 23));
}

// Zoom about the cursor and pan with the mouse: the drawing view's tests.
TEST(ViewTransform, FitShowsTheWholeRectangleAndZeroZoomIsRefused) {
    ViewTransform view({}, 1.0, QSize(200, 100));
    view.fit({0, 0, 10, 10}, 0.1);
    // The height decides: 80 usable pixels for 10 units.
    EXPECT_DOUBLE_EQ(view.pixelsPerUnit(), 8.0);
    expectNear(view.center(), {5, 5});
    view.fit({3, 3, 3, 3});
    EXPECT_DOUBLE_EQ(view.pixelsPerUnit(), 1.0);
    view.fit({0, 0, 0, 50}, 0.0);
    EXPECT_DOUBLE_EQ(view.pixelsPerUnit(), 2.0);
    view.fit(SceneRect{});
    EXPECT_DOUBLE_EQ(view.pixelsPerUnit(), 2.0);
    view.zoomAbout({0, 0}, 0.0);  // refused
    EXPECT_DOUBLE_EQ(view.pixelsPerUnit(), 2.0);
}

}  // namespace
