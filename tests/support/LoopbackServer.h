// A tiny HTTP server on the machine's own address, for one test.
#pragma once

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <atomic>
#include <map>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace test {

/// Answers each request with the page of its path, or with status 404. A page without a status is never
/// answered: the connection stays open until the server goes.
class LoopbackServer {
public:
    struct Page {
        std::string status; // "200 OK"
        std::string headers;
        std::string body;
    };

    explicit LoopbackServer(std::map<std::string, Page> pages)
        : pages_(std::move(pages)), socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* const any = reinterpret_cast<sockaddr*>(&address);
        EXPECT_EQ(::bind(socket_, any, size), 0);
        EXPECT_EQ(::listen(socket_, 8), 0);
        EXPECT_EQ(::getsockname(socket_, any, &size), 0);
        port_ = ::ntohs(address.sin_port);
        thread_ = std::thread([this] { run(); });
    }
    ~LoopbackServer() {
        ::shutdown(socket_, SHUT_RDWR);
        thread_.join();
        ::close(socket_);
    }
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;

    std::string url(const std::string& path) const {
        return "http://127.0.0.1:" + std::to_string(port_) + path;
    }
    int requests() const { return requests_; }

private:
    void run() {
        std::vector<int> open;
        for (;;) {
            const int client = ::accept(socket_, nullptr, nullptr);
            if (client < 0) {
                break;
            }
            if (answer(client)) {
                ::close(client);
            } else {
                open.push_back(client);
            }
        }
        for (const int client : open) {
            ::close(client);
        }
    }

    /// False if the connection is to stay open.
    bool answer(int client) {
        std::string request;
        char block[1024];
        while (request.find("\r\n\r\n") == std::string::npos) {
            const ssize_t got = ::recv(client, block, sizeof block, 0);
            if (got <= 0) {
                return true;
            }
            request.append(block, static_cast<std::size_t>(got));
        }
        const std::size_t start = request.find(' ') + 1;
        const std::string path = request.substr(start, request.find(' ', start) - start);
        const auto found = pages_.find(path);
        const Page page = found != pages_.end() ? found->second : Page{"404 Not Found", "", "nothing here"};
        ++requests_;
        if (page.status.empty()) {
            return false;
        }
        const std::string whole = "HTTP/1.1 " + page.status + "\r\nConnection: close\r\nContent-Length: " +
                                  std::to_string(page.body.size()) + "\r\n" + page.headers + "\r\n" +
                                  page.body;
        std::size_t sent = 0;
        while (sent < whole.size()) {
            const ssize_t now = ::send(client, whole.data() + sent, whole.size() - sent, MSG_NOSIGNAL);
            if (now <= 0) {
                break;
            }
            sent += static_cast<std::size_t>(now);
        }
        return true;
    }

    std::map<std::string, Page> pages_;
    int socket_;
    int port_ = 0;
    std::atomic<int> requests_{0};
    std::thread thread_;
};

} // namespace test
