#include "platform/draw/UIImage.h"

#include "platform/draw/VectorContext.h"
#include "support/Pixels.h"

#include <gtest/gtest.h>
#include <limits>

using namespace platform;

namespace {

TEST(Image, MissingPixelsAreClearAndOutsideIsZero) {
    const UIImage image(2, 2, 1.0, {0xFFFFFFFFU});
    EXPECT_EQ(image.pixel(0, 0), 0xFFFFFFFFU);
    EXPECT_EQ(image.pixel(1, 1), 0U);
    EXPECT_EQ(image.pixel(-1, 0), 0U);
    EXPECT_EQ(image.pixel(0, 2), 0U);
    EXPECT_EQ(UIImage(4, 2, 2.0, {}).size(), CGSizeMake(2, 1));
}

TEST(Image, DrawsStretchedOverItsRectangle) {
    const UIImage source(2, 1, 1.0, {0xFFFF0000U, 0xFF0000FFU});
    const UIImage image =
        test::drawn({20, 10}, 1.0, [&](CGContext&) { source.drawInRect(CGRectMake(4, 2, 12, 6)); });
    EXPECT_EQ(test::pixelAt(image, {5, 5}), (test::Pixel{255, 0, 0, 255}));
    EXPECT_EQ(test::pixelAt(image, {15, 5}), (test::Pixel{0, 0, 255, 255}));
    EXPECT_EQ(test::pixelAt(image, {2, 5}).alpha, 0);
    EXPECT_EQ(test::pixelAt(image, {10, 9}).alpha, 0);
}

TEST(Image, AnEmptyImageDrawsNothingAndHasNoFile) {
    EXPECT_EQ(test::inkedPixels(
                  test::drawn({4, 4}, 1.0, [](CGContext&) { UIImage().drawInRect(CGRectMake(0, 0, 4, 4)); })),
              0U);
    EXPECT_FALSE(UIImagePNGRepresentation(UIImage()));
}

TEST(Image, WritesAPNGFile) {
    const auto bytes =
        UIImagePNGRepresentation(UIImage(3, 2, 1.0, std::vector<std::uint32_t>(6, 0xFF00FF00U)));
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes.value().substr(0, 8), "\x89PNG\r\n\x1a\n");
    EXPECT_EQ(bytes.value().substr(16, 8), std::string("\0\0\0\3\0\0\0\2", 8)); // width and height
}

TEST(BitmapContext, RefusesSizesThatArePicturesOfNothingOrTooMuch) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const CGSize size :
         {CGSize{0, 10}, CGSize{10, -1}, CGSize{nan, 1}, CGSize{1e9, 1}, CGSize{0.2, 5}}) {
        const auto made = BitmapContext::make(size);
        ASSERT_FALSE(made);
        EXPECT_NE(made.error().localizedDescription().find("each side must come to"), std::string::npos);
    }
    EXPECT_FALSE(BitmapContext::make({10, 10}, 0));
}

TEST(BitmapContext, HasScaleTimesThePixelsAndClears) {
    auto made = BitmapContext::make({10, 5}, 2.5);
    ASSERT_TRUE(made);
    BitmapContext& context = *made.value();
    EXPECT_EQ(context.pixelWidth(), 25);
    EXPECT_EQ(context.pixelHeight(), 13);
    const GraphicsScope scope(context);
    UIColor::whiteColor().setFill();
    UIBezierPath::bezierPathWithRect(CGRectMake(0, 0, 4, 4)).fill();
    EXPECT_EQ(test::inkedPixels(context.image()), 100U);
    context.clear();
    EXPECT_EQ(test::inkedPixels(context.image()), 0U);
}

std::string documentOf(VectorContext::Format format) {
    auto made = VectorContext::make(format, {100, 50}, 2.0);
    if (!made) {
        return made.error().localizedDescription();
    }
    {
        const GraphicsScope scope(*made.value());
        UIColor(1, 0, 0, 1).setFill();
        UIBezierPath::bezierPathWithRect(CGRectMake(0, 0, 4, 4)).fill();
    }
    auto bytes = made.value()->finish();
    return bytes ? bytes.value() : bytes.error().localizedDescription();
}

TEST(VectorContext, WritesSVGAndPDFOfTheScaledSize) {
    const std::string svg = documentOf(VectorContext::Format::svg);
    EXPECT_NE(svg.find("<svg"), std::string::npos);
    EXPECT_NE(svg.find("width=\"200px\" height=\"100px\" viewBox=\"0 0 200 100\""), std::string::npos) << svg;
    const std::string pdf = documentOf(VectorContext::Format::pdf);
    EXPECT_EQ(pdf.substr(0, 5), "%PDF-");
    EXPECT_EQ(pdf, documentOf(VectorContext::Format::pdf));
}

TEST(VectorContext, RefusesAPageWithoutAnArea) {
    EXPECT_FALSE(VectorContext::make(VectorContext::Format::svg, {0, 10}));
    EXPECT_FALSE(
        VectorContext::make(VectorContext::Format::pdf, {10, std::numeric_limits<double>::quiet_NaN()}));
}

} // namespace
