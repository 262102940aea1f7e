#include "platform/draw/NSStringDrawing.h"

#include "platform/draw/TextBlock.h"
#include "support/Pixels.h"

#include <gtest/gtest.h>
#include <limits>

using namespace platform;

namespace {

constexpr double kFar = std::numeric_limits<double>::infinity();

NSStringAttributes attributesOf(const UIFont& font, NSTextAlignment alignment = NSTextAlignment::center) {
    NSMutableParagraphStyle style;
    style.setAlignment(alignment);
    return {.font = font, .foregroundColor = UIColor::whiteColor(), .paragraphStyle = style};
}

CGSize sizeOf(std::string_view text, double width, const UIFont& font) {
    return boundingRectWithSize(text, {width, kFar}, NSStringDrawingUsesLineFragmentOrigin,
                                attributesOf(font))
        .size;
}

TEST(Font, EveryNameOfTheTableIsFoundAndNoOther) {
    for (const char* name : {"HelveticaNeue-CondensedBold", "HelveticaNeue", "system"}) {
        const auto font = UIFont::fontWithName(name, 12);
        ASSERT_TRUE(font) << name;
        EXPECT_EQ(font->fontName(), name);
        EXPECT_EQ(font->pointSize(), 12.0);
    }
    EXPECT_FALSE(UIFont::fontWithName("helveticaneue", 12));
    EXPECT_FALSE(UIFont::fontWithName("Sans", 12));
    EXPECT_FALSE(UIFont::fontWithName("", 12));
}

TEST(Font, MetricsGrowWithTheSize) {
    const UIFont font = UIFont::systemFontOfSize(10);
    EXPECT_DOUBLE_EQ(font.lineHeight(), font.ascender() - font.descender());
    EXPECT_DOUBLE_EQ(UIFont::systemFontOfSize(20).lineHeight(), 2 * font.lineHeight());
}

TEST(StringDrawing, TheHeightIsAWholeNumberOfLines) {
    const UIFont font = UIFont::systemFontOfSize(10);
    EXPECT_DOUBLE_EQ(sizeOf("attack", 73, font).height, font.lineHeight());
    EXPECT_DOUBLE_EQ(sizeOf("", 73, font).height, font.lineHeight());
    EXPECT_DOUBLE_EQ(sizeOf("one\ntwo", 73, font).height, 2 * font.lineHeight());
    EXPECT_DOUBLE_EQ(sizeOf("several words that need lines", 40, font).height, 4 * font.lineHeight());
}

TEST(StringDrawing, WidthsScaleExactlyEnoughWithTheSize) {
    const double at10 = sizeOf("threshold", kFar, UIFont::systemFontOfSize(10)).width;
    const double at20 = sizeOf("threshold", kFar, UIFont::systemFontOfSize(20)).width;
    EXPECT_GT(at10, 35);
    EXPECT_LT(at10, 50);
    EXPECT_NEAR(at20, 2 * at10, 0.02); // positions don't snap to a grid
}

TEST(StringDrawing, WithoutLineFragmentsATextIsOneLine) {
    const auto attributes = attributesOf(UIFont::systemFontOfSize(10));
    const CGSize size = boundingRectWithSize("several words that need lines", {40, kFar}, 0, attributes).size;
    EXPECT_DOUBLE_EQ(size.height, attributes.font.lineHeight());
    EXPECT_GT(size.width, 40);
}

TEST(StringDrawing, TheCondensedFaceIsNarrower) {
    EXPECT_LT(sizeOf("QOR LIMITER", kFar, *UIFont::fontWithName("HelveticaNeue-CondensedBold", 22)).width,
              sizeOf("QOR LIMITER", kFar, *UIFont::fontWithName("HelveticaNeue", 22)).width);
}

// Horizontal extent of the ink, in points.
std::pair<double, double> inkColumns(const UIImage& image) {
    int first = image.pixelWidth();
    int last = -1;
    for (int y = 0; y < image.pixelHeight(); ++y) {
        for (int x = 0; x < image.pixelWidth(); ++x) {
            if (image.pixel(x, y) >> 24U > 64U) {
                first = std::min(first, x);
                last = std::max(last, x);
            }
        }
    }
    return {first / image.scale(), (last + 1) / image.scale()};
}

TEST(StringDrawing, AlignmentPlacesTheInk) {
    const auto columnsOf = [](NSTextAlignment alignment) {
        return inkColumns(test::drawn({100, 20}, 4.0, [&](CGContext&) {
            drawInRect("HH", CGRectMake(10, 2, 80, 16),
                       attributesOf(UIFont::systemFontOfSize(12), alignment));
        }));
    };
    const auto [left, leftEnd] = columnsOf(NSTextAlignment::left);
    const auto [centre, centreEnd] = columnsOf(NSTextAlignment::center);
    const auto [right, rightEnd] = columnsOf(NSTextAlignment::right);
    EXPECT_NEAR(left, 11, 1);
    EXPECT_NEAR((centre + centreEnd) / 2, 50, 0.5);
    EXPECT_NEAR(rightEnd, 89, 1);
    EXPECT_NEAR(leftEnd - left, rightEnd - right, 0.3);
}

TEST(StringDrawing, ATextAgainMakesNoNewLayout) {
    const auto draw = [](CGContext&) {
        for (const char* text : {"attack", "release", "threshold", "13"}) {
            const auto attributes = attributesOf(UIFont::systemFontOfSize(10));
            boundingRectWithSize(text, {73, kFar}, NSStringDrawingUsesLineFragmentOrigin, attributes);
            drawInRect(text, CGRectMake(0, 0, 73, 12), attributes);
        }
    };
    test::drawn({80, 20}, 1.0, draw);
    const std::uint64_t before = layoutsMade();
    for (const double scale : {1.0, 2.0, 3.0}) {
        test::drawn({80, 20}, scale, draw);
    }
    EXPECT_EQ(layoutsMade(), before);
}

TEST(StringDrawing, ManyTextsDoNotFillTheMemory) {
    const auto attributes = attributesOf(UIFont::systemFontOfSize(10));
    for (int number = 0; number < 1500; ++number) {
        EXPECT_GT(boundingRectWithSize(std::to_string(number), {73, kFar}, 1, attributes).size.width, 0);
    }
}

TEST(StringDrawing, OddSizesWidthsAndBytesAreHarmless) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double size : {0.0, -5.0, nan, kFar, 1e9}) {
        EXPECT_GE(sizeOf("knee", 73, UIFont::systemFontOfSize(size)).width, 0) << size;
    }
    for (const double width : {0.0, -5.0, nan, 1e300}) {
        EXPECT_GE(sizeOf("knee", width, UIFont::systemFontOfSize(10)).width, 0) << width;
    }
    EXPECT_GT(sizeOf("\xff\xfe broken", kFar, UIFont::systemFontOfSize(10)).width, 0);
    test::drawn({40, 20}, 1.0, [&](CGContext&) {
        drawInRect("knee", CGRectMake(nan, 0, 73, 12), attributesOf(UIFont::systemFontOfSize(10)));
        drawInRect("knee", CGRectMake(0, 0, 73, 12), attributesOf(UIFont::systemFontOfSize(nan)));
    });
}

TEST(StringDrawing, TailTruncationKeepsOneLineWithinTheWidth) {
    auto attributes = attributesOf(UIFont::systemFontOfSize(10));
    attributes.paragraphStyle.setLineBreakMode(NSLineBreakMode::truncatingTail);
    const CGSize size =
        boundingRectWithSize("a name that is far too long to fit", {60, kFar}, 1, attributes).size;
    EXPECT_DOUBLE_EQ(size.height, attributes.font.lineHeight());
    EXPECT_LE(size.width, 60.1);
}

TEST(StringDrawing, TheFontsAreTheBuiltInOnes) {
    // Four H of the built-in files are 2.853515625 and 2.455078125 times the size wide.
    EXPECT_NEAR(sizeOf("HHHH", kFar, *UIFont::fontWithName("HelveticaNeue", 10)).width, 28.53515625, 1e-9);
    EXPECT_NEAR(sizeOf("HHHH", kFar, *UIFont::fontWithName("HelveticaNeue-CondensedBold", 10)).width,
                24.55078125, 1e-9);
}

} // namespace
