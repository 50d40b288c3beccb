#ifndef ORVIA_TESTS_ARCHIVE_OTHER_PROCESS_H
#define ORVIA_TESTS_ARCHIVE_OTHER_PROCESS_H

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <stdexcept>
#include <string>
#include <vector>

extern char** environ;

namespace testing_support {

/// A program that runs beside the test, joined to it by its input and output.
class OtherProcess {
 public:
    explicit OtherProcess(const std::vector<std::string>& command) {
        std::array<int, 2> in = {};
        std::array<int, 2> out = {};
        if (::pipe2(in.data(), O_CLOEXEC) != 0 || ::pipe2(out.data(), O_CLOEXEC) != 0) {
            throw std::runtime_error("no pipe");
        }
        posix_spawn_file_actions_t actions{};
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_adddup2(&actions, in[0], STDIN_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
        std::vector<char*> arguments;
        for (const std::string& argument : command) {
            arguments.push_back(const_cast<char*>(argument.c_str()));
        }
        arguments.push_back(nullptr);
        const int failed =
            ::posix_spawn(&id_, arguments[0], &actions, nullptr, arguments.data(), environ);
        ::posix_spawn_file_actions_destroy(&actions);
        ::close(in[0]);
        ::close(out[1]);
        input_ = in[1];
        output_ = out[0];
        if (failed != 0) {
            id_ = 0;
            throw std::runtime_error("cannot run " + command[0]);
        }
    }
    ~OtherProcess() {
        Kill();
        ::close(input_);
        ::close(output_);
    }
    OtherProcess(const OtherProcess&) = delete;
    OtherProcess& operator=(const OtherProcess&) = delete;

    /// Kills it, as nothing can hinder, and waits until it is gone. False if it had ended before.
    bool Kill() {
        if (id_ == 0) {
            return false;
        }
        ::kill(id_, SIGKILL);
        int status = 0;
        ::waitpid(id_, &status, 0);
        id_ = 0;
        return WIFSIGNALED(status);
    }

    /// Waits until it has written something or ends.
    void AwaitOutput() {
        pollfd one{output_, POLLIN, 0};
        constexpr int TenSeconds = 10'000;
        if (::poll(&one, 1, TenSeconds) != 1) {
            throw std::runtime_error("the other process says nothing");
        }
    }

    /// All that it has written. It has ended.
    [[nodiscard]] std::string Output() const {
        std::string text;
        std::array<char, 4096> piece{};
        for (ssize_t size = 1; size > 0;) {
            size = ::read(output_, piece.data(), piece.size());
            text.append(piece.data(), static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
        }
        return text;
    }

 private:
    pid_t id_ = 0;
    int input_ = -1;
    int output_ = -1;
};

}  // namespace testing_support

#endif  // ORVIA_TESTS_ARCHIVE_OTHER_PROCESS_H
