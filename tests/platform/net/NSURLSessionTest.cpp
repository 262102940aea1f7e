#include "platform/net/NSURLSession.h"

#include "support/LoopbackServer.h"

#include <gtest/gtest.h>

#include <optional>
#include <thread>

using platform::NSHTTPURLResponse;
using platform::NSURLSession;
using platform::Result;
using platform::RunLoop;
using platform::textView;
using platform::URL;
using platform::URLRequest;

namespace {

URLRequest request(const std::string& text) {
    return URLRequest(*URL::initWithString(text));
}

} // namespace

TEST(NSURLSession, CallsBackOnTheLoopThatWasCurrentWithDataAndStatus) {
    test::LoopbackServer server({{"/ok", {"200 OK", "", "body"}}});
    RunLoop loop;
    NSURLSession session;
    std::optional<std::thread::id> calledOn;
    {
        const RunLoop::Scope scope(loop);
        session.data(request(server.url("/ok")), [&](Result<NSURLSession::Answer>& answer) {
            calledOn = std::this_thread::get_id();
            ASSERT_TRUE(answer.ok());
            EXPECT_EQ(textView(answer.value().data), "body");
            const auto* http = dynamic_cast<const NSHTTPURLResponse*>(answer.value().response.get());
            ASSERT_NE(http, nullptr);
            EXPECT_EQ(http->statusCode, 200);
        });
    }
    session.waitUntilIdle();
    EXPECT_FALSE(calledOn.has_value());
    loop.pump();
    EXPECT_EQ(calledOn, std::this_thread::get_id());
}

TEST(NSURLSession, AnErrorPageIsAnAnswerWithItsStatus) {
    test::LoopbackServer server({{"/broken", {"500 Internal Server Error", "", "sorry"}}});
    RunLoop loop;
    const RunLoop::Scope scope(loop);
    NSURLSession session;
    std::int64_t status = 0;
    session.data(request(server.url("/broken")), [&](Result<NSURLSession::Answer>& answer) {
        ASSERT_TRUE(answer.ok());
        status = dynamic_cast<const NSHTTPURLResponse&>(*answer.value().response).statusCode;
    });
    session.waitUntilIdle();
    loop.pump();
    EXPECT_EQ(status, 500);
}

TEST(NSURLSession, AFilesResponseIsNoHttpResponse) {
    RunLoop loop;
    const RunLoop::Scope scope(loop);
    NSURLSession session;
    bool called = false;
    session.data(request("file:///proc/self/cmdline"), [&](Result<NSURLSession::Answer>& answer) {
        called = true;
        ASSERT_TRUE(answer.ok());
        EXPECT_EQ(dynamic_cast<const NSHTTPURLResponse*>(answer.value().response.get()), nullptr);
    });
    session.waitUntilIdle();
    loop.pump();
    EXPECT_TRUE(called);
}

TEST(NSURLSession, AFailureIsAnErrorThatNamesTheLocation) {
    RunLoop loop;
    const RunLoop::Scope scope(loop);
    NSURLSession session;
    std::string message;
    session.data(request("file:///nonexistent/file"), [&](Result<NSURLSession::Answer>& answer) {
        ASSERT_FALSE(answer.ok());
        message = answer.error().localizedDescription();
    });
    session.waitUntilIdle();
    loop.pump();
    EXPECT_NE(message.find("file:///nonexistent/file"), std::string::npos);
}

TEST(NSURLSession, ManyRequestsRunSideBySide) {
    test::LoopbackServer server({{"/ok", {"200 OK", "", "body"}}});
    RunLoop loop;
    const RunLoop::Scope scope(loop);
    NSURLSession session;
    int answers = 0;
    for (int i = 0; i < 20; ++i) {
        session.data(request(server.url("/ok")),
                     [&](Result<NSURLSession::Answer>& answer) { answers += answer.ok(); });
    }
    session.waitUntilIdle();
    loop.pump();
    EXPECT_EQ(answers, 20);
    EXPECT_EQ(server.requests(), 20);
}

TEST(NSURLSession, ALoopThatIsGoneIsNotCalledBack) {
    test::LoopbackServer server({{"/ok", {"200 OK", "", "body"}}});
    NSURLSession session;
    bool called = false;
    {
        RunLoop loop;
        const RunLoop::Scope scope(loop);
        session.data(request(server.url("/ok")), [&](Result<NSURLSession::Answer>&) { called = true; });
    }
    session.waitUntilIdle();
    EXPECT_FALSE(called);
}

TEST(NSURLSession, ItsEndBreaksOffARequestThatIsNeverAnswered) {
    test::LoopbackServer server({{"/hang", test::LoopbackServer::Page{}}});
    RunLoop loop;
    const RunLoop::Scope scope(loop);
    bool called = false;
    {
        NSURLSession session;
        session.data(request(server.url("/hang")), [&](Result<NSURLSession::Answer>&) { called = true; });
        while (server.requests() == 0) {
            std::this_thread::yield();
        }
    } // would wait for a minute otherwise
    loop.pump();
    EXPECT_FALSE(called);
}
