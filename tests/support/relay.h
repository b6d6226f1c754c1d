// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "tests/support/text.h"

#include <QTemporaryDir>

#include <array>
#include <atomic>
#include <chrono>
#include <list>
#include <thread>

#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

/// A network between programs and the socket of a server: it passes on what comes, later by a delay each way,
/// and counts how often a program waits for an answer.
class Relay {
public:
    explicit Relay(const QString& serverSocket, std::chrono::microseconds delayEachWay = {})
        : server(serverSocket), delay(delayEachWay), listener(::socket(AF_UNIX, SOCK_STREAM, 0)) {
        const sockaddr_un address = addressOf(socket());
        ::bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address);
        ::listen(listener, 64);
        accepting = std::thread([this] { accept(); });
    }
    Relay(const Relay&) = delete;
    Relay& operator=(const Relay&) = delete;
    ~Relay() {
        ::shutdown(listener, SHUT_RDWR);
        accepting.join();
        ::close(listener);
        for (Line& line : lines) {
            line.end();
            line.there.join();
            line.back.join();
            ::close(line.client);
            ::close(line.server);
        }
    }
    QString socket() const { return folder.filePath(u"relay"_s); }
    /// Those begun so far, on all connections.
    long roundTrips() const { return trips; }

private:
    struct Line {
        int client, server;
        std::atomic<bool> isAnswered = true;
        std::thread there, back;
        void end() const {
            ::shutdown(client, SHUT_RDWR);
            ::shutdown(server, SHUT_RDWR);
        }
    };

    static sockaddr_un addressOf(const QString& path) {
        sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
        qstrncpy(address.sun_path, path.toLocal8Bit().constData(), sizeof address.sun_path);
        return address;
    }

    void accept() {
        for (int client = -1; (client = ::accept(listener, nullptr, nullptr)) >= 0;) {
            const int onward = ::socket(AF_UNIX, SOCK_STREAM, 0);
            const sockaddr_un address = addressOf(server);
            ::connect(onward, reinterpret_cast<const sockaddr*>(&address), sizeof address);
            Line& line = lines.emplace_back(client, onward);
            line.there = std::thread([this, &line] { pass(line, line.client, line.server); });
            line.back = std::thread([this, &line] { pass(line, line.server, line.client); });
        }
    }

    void pass(Line& line, int from, int to) {
        ::prctl(PR_SET_TIMERSLACK, 1UL); // nanosecond; by default a sleep takes 50 microseconds more
        std::array<char, 1 << 16> buffer{};
        for (ssize_t size = 0; (size = ::read(from, buffer.data(), buffer.size())) > 0;) {
            const auto due = std::chrono::steady_clock::now() + delay;
            if (from == line.client && line.isAnswered.exchange(false))
                ++trips;
            if (delay.count() > 0)
                std::this_thread::sleep_until(due);
            if (from == line.server)
                line.isAnswered = true;
            for (ssize_t sent = 0, now = 0; sent < size; sent += now) {
                now = ::send(to, buffer.data() + sent, std::size_t(size - sent), MSG_NOSIGNAL);
                if (now <= 0)
                    return line.end();
            }
        }
        line.end();
    }

    QTemporaryDir folder;
    QString server;
    std::chrono::microseconds delay;
    int listener;
    std::list<Line> lines; // of the accepting thread
    std::atomic<long> trips = 0;
    std::thread accepting;
};
