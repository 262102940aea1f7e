#include "interface/PanelScene.h"
#include "platform/draw/RecordingContext.h"
#include "platform/draw/TextBlock.h"
#include "support/Pixels.h"

#include <gtest/gtest.h>
#include <malloc.h>

using namespace qor;

namespace {

TEST(PanelScene, StacksPlatePanelAndNeedles) {
    PanelScene scene;
    const UIImage image =
        test::drawn({512, 340}, 2.0, [&](CGContext&) { scene.draw(CGRectMake(0, 0, 512, 340)); });
    EXPECT_EQ(test::pixelAt(image, {1, 170}).alpha, 0); // the plate's rim
    EXPECT_EQ(test::pixelAt(image, {8, 170}), (test::Pixel{38, 38, 38, 255}));
    EXPECT_EQ(test::pixelAt(image, {16.5, 170}), (test::Pixel{192, 192, 192, 255}));
    const test::Pixel needle = test::pixelAt(image, {310, 233.5});
    EXPECT_GT(needle.red, needle.green + 40);
}

TEST(PanelScene, ThePlateKeepsThePanelsProportionsInAPictureOfAnotherShape) {
    PanelScene scene;
    struct Case {
        CGSize size;
        CGRect panel;
    };
    for (const auto& [size, panel] :
         {Case{{1024, 340}, CGRectMake(256, 0, 512, 340)}, Case{{256, 400}, CGRectMake(0, 115, 256, 170)}}) {
        const UIImage image = test::drawn(
            size, 1.0, [&, whole = size](CGContext&) { scene.draw({.origin = {}, .size = whole}); });
        const double middleX = CGRectGetMidX(panel);
        const double middleY = CGRectGetMidY(panel);
        EXPECT_EQ(test::pixelAt(image, {CGRectGetMinX(panel) + 3.5, middleY}).alpha, 255);
        EXPECT_EQ(test::pixelAt(image, {middleX, CGRectGetMinY(panel) + 3.5}).alpha, 255);
        EXPECT_EQ(test::pixelAt(image, {CGRectGetMinX(panel) + 1.5, middleY}).alpha, 0);
        EXPECT_EQ(test::pixelAt(image, {CGRectGetMaxX(panel) - 1.5, middleY}).alpha, 0);
        EXPECT_EQ(test::pixelAt(image, {middleX, CGRectGetMinY(panel) + 1.5}).alpha, 0);
        EXPECT_EQ(test::pixelAt(image, {middleX, CGRectGetMaxY(panel) - 1.5}).alpha, 0);
    }
}

TEST(PanelScene, ContrastTurnsPlateAndLinesAgainstEachOther) {
    PanelScene scene;
    scene.setContrast(1.0F);
    const UIImage image =
        test::drawn({512, 340}, 1.0, [&](CGContext&) { scene.draw(CGRectMake(0, 0, 512, 340)); });
    EXPECT_EQ(test::pixelAt(image, {8, 170}), (test::Pixel{255, 255, 255, 255}));
    EXPECT_EQ(test::pixelAt(image, {16.5, 170}), (test::Pixel{0, 0, 0, 255}));
}

TEST(PanelScene, EveryTextIsLaidOutOnceWhateverTheScale) {
    PanelScene scene;
    const auto draw = [&](CGContext&) { scene.draw(CGRectMake(0, 0, 512, 340)); };
    test::drawn({512, 340}, 1.0, draw);
    const std::uint64_t before = layoutsMade();
    for (const double scale : {1.0, 2.0, 3.0}) {
        test::drawn({512, 340}, scale, draw);
    }
    EXPECT_EQ(layoutsMade(), before);
}

TEST(PanelScene, MemoryStaysLevelOverManyDraws) {
    PanelScene scene;
    auto made = BitmapContext::make({256, 170}, 1.0);
    ASSERT_TRUE(made);
    const GraphicsScope scope(*made.value());
    const auto draw = [&](int times) {
        for (int i = 0; i < times; ++i) {
            scene.setMeters(i % 100 / 100.0, i % 70 / 70.0, i % 50 / 50.0, i % 30 / 30.0);
            scene.needles.drawMain(CGRectMake(0, 0, 256, 170));
            if (i % 20 == 0) {
                scene.panel.valueAttack = i % 101 / 100.0;
                scene.draw(CGRectMake(0, 0, 256, 170));
            }
        }
    };
    draw(2100); // every value text has been seen once
    const std::size_t before = mallinfo2().uordblks;
    draw(8000);
    const std::size_t after = mallinfo2().uordblks;
    EXPECT_LE(after, before + 16384);
}

} // namespace
