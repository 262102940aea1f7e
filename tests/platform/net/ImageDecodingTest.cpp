#include "platform/net/ImageDecoding.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using platform::Data;
using platform::dataFromText;
using platform::imageWithData;
using platform::UIImage;
using testing::HasSubstr;

namespace {

Data pngOf(const UIImage& image) {
    const auto bytes = platform::UIImagePNGRepresentation(image);
    EXPECT_TRUE(bytes.ok());
    return dataFromText(bytes.value());
}

/// A grey picture of one pixel in the portable greymap format, with the size that is asked for in its header.
std::string greymap(const std::string& size) {
    return "P5\n" + size + "\n255\n\x80";
}

} // namespace

TEST(ImageDecoding, GivesThePixelsOfAPngRowByRow) {
    const UIImage image(2, 2, 1.0, {0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFF102030});
    const auto decoded = imageWithData(pngOf(image));
    ASSERT_TRUE(decoded.ok()) << decoded.error().localizedDescription();
    EXPECT_EQ(decoded.value().pixelWidth(), 2);
    EXPECT_EQ(decoded.value().pixelHeight(), 2);
    EXPECT_EQ(decoded.value().scale(), 1.0);
    EXPECT_EQ(decoded.value().pixels(), image.pixels());
}

TEST(ImageDecoding, MultipliesColoursByAlpha) {
    const UIImage image(3, 1, 1.0, {0x00000000, 0x80800040, 0xFFFFFFFF});
    const auto decoded = imageWithData(pngOf(image));
    ASSERT_TRUE(decoded.ok());
    EXPECT_EQ(decoded.value().pixels(), image.pixels());
}

TEST(ImageDecoding, ReadsOtherFormatsAndRowsThatArePadded) {
    const auto decoded = imageWithData(dataFromText(greymap("1 1")));
    ASSERT_TRUE(decoded.ok()) << decoded.error().localizedDescription();
    EXPECT_EQ(decoded.value().pixel(0, 0), 0xFF808080U);
    std::vector<std::uint32_t> pixels;
    for (std::uint32_t i = 0; i < 35; ++i) {
        pixels.push_back(0xFF000000U | (i << 8));
    }
    const UIImage odd(7, 5, 1.0, pixels);
    const auto again = imageWithData(pngOf(odd));
    ASSERT_TRUE(again.ok());
    EXPECT_EQ(again.value().pixels(), pixels);
}

TEST(ImageDecoding, RefusesWhatIsNoPicture) {
    for (const char* text : {"", "plain text", "\x89PNG\r\n\x1A\n"}) {
        const auto decoded = imageWithData(dataFromText(text));
        ASSERT_FALSE(decoded.ok()) << text;
        EXPECT_THAT(decoded.error().localizedDescription(), HasSubstr("The data is no picture"));
    }
}

TEST(ImageDecoding, APictureThatIsCutOffIsRefusedOrKeepsItsSize) {
    std::vector<std::uint32_t> noise;
    for (std::uint32_t i = 0; i < 256; ++i) {
        noise.push_back(0xFF000000U | (i * 2654435761U >> 8));
    }
    const Data whole = pngOf(UIImage(16, 16, 1.0, noise));
    int refused = 0;
    for (std::size_t size = 0; size < whole.size(); ++size) {
        const auto decoded =
            imageWithData(Data(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)));
        if (decoded.ok()) {
            EXPECT_EQ(decoded.value().pixelWidth(), 16) << size;
            EXPECT_EQ(decoded.value().pixels().size(), 256U) << size;
        } else {
            ++refused;
        }
    }
    EXPECT_GT(refused, 8); // at the least without a whole signature
}

TEST(ImageDecoding, RefusesAHugePictureWithoutMakingRoomForIt) {
    const auto decoded = imageWithData(dataFromText(greymap("60000 60000")));
    ASSERT_FALSE(decoded.ok());
    EXPECT_THAT(decoded.error().localizedDescription(), HasSubstr("16384"));
}
