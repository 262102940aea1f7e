#include "Common/ImageViewExtensions.h"

#include "platform/draw/BitmapContext.h"
#include "platform/draw/CGContext.h"
#include "platform/net/NSURLSession.h"
#include "support/CapturedLog.h"
#include "support/LoopbackServer.h"
#include "support/TemporaryDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

using namespace platform;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

std::string png() {
    return UIImagePNGRepresentation(UIImage(2, 1, 1.0, {0xFFFF0000, 0xFF00FF00})).value();
}

/// An image view, a run loop that is current, and the log.
class ImageView : public testing::Test {
protected:
    /// Runs everything that the main queue has, answers from the network included.
    void settle() {
        for (int round = 0; round < 3; ++round) {
            NSURLSession::sharedSession().waitUntilIdle();
            loop_.pump();
        }
    }
    std::vector<std::uint32_t> pixels() const {
        return view_->image() ? view_->image()->pixels() : std::vector<std::uint32_t>{};
    }

    test::CapturedLog log_;
    RunLoop loop_;
    RunLoop::Scope scope_{loop_};
    Ref<UIImageView> view_ = makeRef<UIImageView>(CGRect{{0, 0}, {4, 2}});
};

} // namespace

TEST_F(ImageView, LoadFromShowsAFilesPictureOnTheMainQueue) {
    const test::TemporaryDirectory directory;
    std::ofstream(directory.file("p.png"), std::ios::binary) << png();
    qor::loadFrom(view_, "file://" + directory.file("p.png"));
    EXPECT_FALSE(view_->image().has_value());
    loop_.pump();
    EXPECT_THAT(pixels(), ElementsAre(0xFFFF0000, 0xFF00FF00));
    EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(ImageView, LoadFromSaysThatATextIsNoLocation) {
    qor::loadFrom(view_, "no location");
    settle();
    EXPECT_THAT(log_.lines(),
                ElementsAre("UIImageView::loadFrom() : Could not encode url string : no location"));
}

TEST_F(ImageView, LoadFromSaysThatThereIsNoData) {
    qor::loadFrom(view_, "file:///nonexistent/p.png");
    settle();
    EXPECT_THAT(log_.lines(), ElementsAre("UIImageView::loadFrom() : Could not encode image data."));
}

TEST_F(ImageView, LoadFromSaysThatTheDataIsNoPictureAndKeepsTheOneBefore) {
    view_->setImage(UIImage(1, 1, 1.0, {0xFF0000FF}));
    const test::TemporaryDirectory directory;
    std::ofstream(directory.file("p.png")) << "plain text";
    qor::loadFrom(view_, "file://" + directory.file("p.png"));
    settle();
    EXPECT_THAT(log_.lines(), ElementsAre("UIImageView::loadFrom() : Could not assign image."));
    EXPECT_THAT(pixels(), ElementsAre(0xFF0000FF));
}

TEST_F(ImageView, GetImageShowsTheFetchedPictureAndSaysSo) {
    test::LoopbackServer server({{"/p.png", {"200 OK", "", png()}}});
    qor::getImageFromURLString(view_, server.url("/p.png"));
    EXPECT_EQ(server.requests(), 0); // a task of the main queue starts it
    settle();
    EXPECT_THAT(pixels(), ElementsAre(0xFFFF0000, 0xFF00FF00));
    EXPECT_THAT(log_.lines(), ElementsAre("Fetched image successfully"));
}

TEST_F(ImageView, GetImageTakesNothingFromOtherStatusesAndSchemes) {
    test::LoopbackServer server(
        {{"/created", {"201 Created", "", png()}}, {"/gone", {"410 Gone", "", png()}}});
    const test::TemporaryDirectory directory;
    std::ofstream(directory.file("p.png"), std::ios::binary) << png();
    qor::getImageFromURLString(view_, server.url("/created"));
    qor::getImageFromURLString(view_, server.url("/gone"));
    qor::getImageFromURLString(view_, "file://" + directory.file("p.png"));
    settle();
    EXPECT_EQ(server.requests(), 2);
    EXPECT_FALSE(view_->image().has_value());
    EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(ImageView, GetImageOfATextThatIsNoLocationDoesNothing) {
    qor::getImageFromURLString(view_, "no location");
    EXPECT_FALSE(loop_.pump());
    EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(ImageView, GetImageWritesAFailureToTheLog) {
    qor::getImageFromURLString(view_, "file:///nonexistent/p.png");
    settle();
    ASSERT_EQ(log_.lines().size(), 1U);
    EXPECT_THAT(log_.lines()[0], HasSubstr("file:///nonexistent/p.png"));
}

TEST_F(ImageView, GetImageOfAPageThatIsNoPictureClearsTheView) {
    view_->setImage(UIImage(1, 1, 1.0, {0xFF0000FF}));
    test::LoopbackServer server({{"/text", {"200 OK", "", "plain text"}}});
    qor::getImageFromURLString(view_, server.url("/text"));
    settle();
    EXPECT_FALSE(view_->image().has_value());
}

TEST_F(ImageView, AViewThatGoesWhileItsPictureIsFetchedIsLeftAlone) {
    test::LoopbackServer server({{"/p.png", {"200 OK", "", png()}}});
    qor::getImageFromURLString(view_, server.url("/p.png"));
    loop_.pump();
    const Weak<UIImageView> gone = view_;
    view_.reset();
    EXPECT_TRUE(gone.expired());
    settle();
    EXPECT_THAT(log_.lines(), IsEmpty());
}

TEST_F(ImageView, DrawsItsPictureOverItsBounds) {
    view_->setImage(UIImage(1, 1, 1.0, {0xFF123456}));
    const auto context = std::move(BitmapContext::make({4, 2})).value();
    view_->drawHierarchy(*context);
    EXPECT_EQ(context->image().pixels(), std::vector<std::uint32_t>(8, 0xFF123456));
}
