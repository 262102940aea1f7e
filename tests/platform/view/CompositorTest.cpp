// Pictures that are made in steps, of what has changed alone.
#include "platform/view/View.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

using namespace platform; // NOLINT(google-build-using-namespace): the library under test

namespace {

/// Strokes a line and fills a spot, which may move anywhere.
class Needle : public UIView {
public:
    explicit Needle(const CGRect& frame) : UIView(frame) {}
    void draw(const CGRect& /*rect*/) override {
        if (nothing) {
            return;
        }
        color.setStroke();
        color.setFill();
        UIBezierPath line;
        line.moveToPoint(from);
        line.addLineToPoint(to);
        line.setLineWidth(3.0);
        line.stroke();
        UIBezierPath::bezierPathWithOvalInRect(CGRectMake(from.x, to.y, 7.0, 7.0)).fill();
    }
    CGPoint from;
    CGPoint to;
    UIColor color = UIColor::whiteColor();
    bool nothing = false;
};

struct Scene {
    Scene() {
        window->setScale(1.5);
        window->setBackgroundColor(UIColor(0.2, 0.3, 0.4, 1.0));
        for (int i = 0; i < 3; ++i) {
            needles.push_back(makeRef<Needle>(CGRectMake(5.0 * i, 3.0 * i, 60.0, 40.0)));
            window->addSubview(needles.back());
        }
    }
    Ref<UIWindow> window = makeRef<UIWindow>(CGSizeMake(80.0, 60.0));
    std::vector<Ref<Needle>> needles;
};

TEST(ViewCompositor, APictureMadeInStepsIsTheOneMadeAtOnce) {
    std::minstd_rand random(7);
    const auto number = [&](double from, double to) {
        return std::uniform_real_distribution<double>(from, to)(random);
    };
    Scene steps;
    steps.window->display();
    for (int step = 0; step < 300; ++step) {
        Needle& moved = *steps.needles[random() % steps.needles.size()];
        moved.from = {.x = number(-10.0, 70.0), .y = number(-10.0, 50.0)};
        moved.to = {.x = number(-10.0, 70.0), .y = number(-10.0, 50.0)};
        moved.color = UIColor(number(0.0, 1.0), 1.0, 0.5, random() % 2 == 0 ? 1.0 : 0.4);
        moved.nothing = random() % 8 == 0;
        moved.setAlpha(random() % 3 == 0 ? 0.6 : 1.0);
        if (random() % 5 == 0) {
            moved.setFrame(CGRectMake(number(-20.0, 40.0), number(-20.0, 40.0), 60.0, 40.0));
        }
        moved.setNeedsDisplay();
        const std::vector<std::uint32_t> before = steps.window->picture().pixels();
        const PixelRect changed = steps.window->display();
        Scene once;
        for (std::size_t i = 0; i < once.needles.size(); ++i) {
            const Needle& like = *steps.needles[i];
            once.needles[i]->from = like.from;
            once.needles[i]->to = like.to;
            once.needles[i]->color = like.color;
            once.needles[i]->nothing = like.nothing;
            once.needles[i]->setAlpha(like.alpha());
            once.needles[i]->setFrame(like.frame());
        }
        once.window->display();
        const std::vector<std::uint32_t>& now = steps.window->picture().pixels();
        ASSERT_EQ(now, once.window->picture().pixels()) << step;
        for (std::size_t i = 0; i < now.size(); ++i) {
            const int x = static_cast<int>(i) % steps.window->picture().width();
            const int y = static_cast<int>(i) / steps.window->picture().width();
            const bool told = x >= changed.x && x < changed.x + changed.width && y >= changed.y &&
                              y < changed.y + changed.height;
            ASSERT_TRUE(told || now[i] == before[i]) << step << ": " << x << ", " << y;
        }
    }
}

TEST(ViewCompositor, TellsOnlyThePixelsThatANeedleChanges) {
    Scene scene;
    Needle& needle = *scene.needles.front();
    needle.from = {.x = 10.0, .y = 10.0};
    needle.to = {.x = 20.0, .y = 10.0};
    scene.window->display();
    needle.setNeedsDisplay();
    EXPECT_TRUE(scene.window->display().isEmpty()) << "drawn again as it was";
    needle.to = {.x = 20.0, .y = 14.0};
    needle.setNeedsDisplay();
    const PixelRect changed = scene.window->display();
    EXPECT_FALSE(changed.isEmpty());
    EXPECT_LT(changed.width * changed.height, 600);
}

TEST(ViewCompositor, FadesWhiteToo) {
    Scene scene;
    scene.window->setBackgroundColor(UIColor::blackColor());
    scene.needles.front()->setBackgroundColor(UIColor::whiteColor());
    scene.needles.front()->nothing = true;
    scene.needles.front()->setAlpha(0.5);
    scene.window->display();
    const ViewCompositor& picture = scene.window->picture();
    EXPECT_NEAR(
        static_cast<double>(picture.pixels()[static_cast<std::size_t>(picture.width() * 2 + 2)] & 0xFFU),
        127.5, 1.0);
}

} // namespace
