// The program needs a pseudo-terminal, which not every system has.
#ifdef ORVIA_SIM_PROGRAM

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>

#include "simulator/wire.h"

namespace simulator {
namespace {

namespace fs = std::filesystem;

constexpr int Patience = 5000;  ///< milliseconds for what comes in a few at the most

/// A folder that goes with the test.
class TemporaryFolder {
 public:
    TemporaryFolder() {
        std::string pattern = (fs::temp_directory_path() / "orvia-sim-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { fs::remove_all(path_); }

    [[nodiscard]] std::string File(const std::string& name) const {
        return (path_ / name).string();
    }

 private:
    fs::path path_;
};

/// Reads from a handle until the text has come, or patience is at its end.
std::string ReadUntil(int fd, const std::string& wanted) {
    std::string text;
    while (text.find(wanted) == std::string::npos) {
        pollfd handle{fd, POLLIN, 0};
        std::array<char, 4096> buffer{};
        if (poll(&handle, 1, Patience) <= 0) {
            break;
        }
        const ssize_t size = read(fd, buffer.data(), buffer.size());
        if (size <= 0) {
            break;
        }
        text.append(buffer.data(), static_cast<std::size_t>(size));
    }
    return text;
}

/// orvia-sim as a process of its own.
class Program {
 public:
    explicit Program(std::vector<std::string> arguments) {
        std::array<int, 2> in{};
        std::array<int, 2> out{};
        EXPECT_EQ(pipe(in.data()), 0);
        EXPECT_EQ(pipe(out.data()), 0);
        arguments.insert(arguments.begin(), ORVIA_SIM_PROGRAM);
        std::vector<char*> words(arguments.size() + 1, nullptr);
        std::transform(arguments.begin(), arguments.end(), words.begin(),
                       [](std::string& argument) { return argument.data(); });
        process_ = fork();
        if (process_ == 0) {
            dup2(in[0], STDIN_FILENO);
            dup2(out[1], STDOUT_FILENO);
            dup2(out[1], STDERR_FILENO);
            close(in[1]);
            close(out[0]);
            execv(ORVIA_SIM_PROGRAM, words.data());
            _exit(127);
        }
        close(in[0]);
        close(out[1]);
        in_ = in[1];
        out_ = out[0];
    }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    ~Program() {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            waitpid(process_, nullptr, 0);
        }
        if (in_ >= 0) {
            close(in_);
        }
        close(out_);
    }

    std::string Until(const std::string& wanted) { return ReadUntil(out_, wanted); }
    void Say(const std::string& line) {
        const std::string text = line + "\n";
        EXPECT_EQ(write(in_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    }
    void CloseInput() { close(std::exchange(in_, -1)); }
    void Signal(int signal) { kill(process_, signal); }

    /// Waits for its end; its exit status, -1 if it did not end by itself.
    int Status() {
        ReadUntil(out_, std::string(1, '\0'));
        int status = 0;
        waitpid(process_, &status, 0);
        process_ = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    /// Seconds of processor that it has used.
    [[nodiscard]] double ProcessorTime() const {
        std::ifstream stat("/proc/" + std::to_string(process_) + "/stat");
        std::string word;
        for (int field = 1; field <= 13; ++field) {
            stat >> word;
        }
        double user = 0;
        double system = 0;
        stat >> user >> system;
        return (user + system) / static_cast<double>(sysconf(_SC_CLK_TCK));
    }

 private:
    pid_t process_ = -1;
    int in_ = -1;
    int out_ = -1;
};

/// The console's end of the line.
class Port {
 public:
    explicit Port(const std::string& path)
        : fd_(open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK)) {}
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;
    ~Port() {
        if (fd_ >= 0) {
            close(fd_);
        }
    }

    [[nodiscard]] bool IsOpen() const { return fd_ >= 0; }
    [[nodiscard]] int Fd() const { return fd_; }

    void Send(const Bytes& bytes) {
        EXPECT_EQ(write(fd_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
    }
    /// The next `count` bytes, fewer if they do not come.
    Bytes Receive(std::size_t count, int patience = Patience) {
        Bytes bytes;
        pollfd handle{fd_, POLLIN, 0};
        while (bytes.size() < count && poll(&handle, 1, patience) > 0) {
            Bytes more(count - bytes.size());
            const ssize_t size = read(fd_, more.data(), more.size());
            if (size <= 0) {
                break;
            }
            bytes.insert(bytes.end(), more.begin(), more.begin() + size);
        }
        return bytes;
    }
    Bytes Ask(const Bytes& bytes, std::size_t count) {
        Send(bytes);
        return Receive(count);
    }
    /// Whether the other end has gone.
    bool HungUp() {
        pollfd handle{fd_, POLLIN, 0};
        return poll(&handle, 1, Patience) > 0 && (handle.revents & (POLLHUP | POLLERR)) != 0;
    }

 private:
    int fd_;
};

class ProgramTest : public testing::Test {
 protected:
    static std::string Site() { return std::string(ORVIA_DEMO_FOLDER) + "/site.net"; }

    /// Starts it on the sample site with standard input for control, and waits until it serves.
    std::unique_ptr<Program> Start(std::vector<std::string> more = {}) {
        std::vector<std::string> arguments = {Site(), "--link", link, "--control", "-"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        auto program = std::make_unique<Program>(arguments);
        EXPECT_EQ(program->Until("\n"), "ready: " + link + "\n");
        return program;
    }

    int StatusOf(const std::vector<std::string>& arguments, std::string& output) {
        Program program(arguments);
        output = program.Until(std::string(1, '\0'));
        return program.Status();
    }

    const Bytes enter = BytesOf("AT+++\r");
    const Bytes leave = BytesOf(
        "\xCC"
        "ATO\r");
    const Bytes toRainGauge = {0xCC, 0x10, 0x10, 0x00, 0x02};

    void Select(Port& port) {
        EXPECT_EQ(port.Ask(enter, 4), (Bytes{0xCC, 'C', 'O', 'M'}));
        EXPECT_EQ(port.Ask({0xCC, 0x02, 0x10}, 3), (Bytes{0xCC, 0x10, 0x00}));
        EXPECT_EQ(port.Ask(toRainGauge, 4), (Bytes{0xCC, 0x10, 0x00, 0x02}));
        EXPECT_EQ(port.Ask(leave, 4), (Bytes{0xCC, 'D', 'A', 'T'}));
    }

    TemporaryFolder folder;
    const std::string link = folder.File("COM5");
    const Bytes version = EncodeFrame(Bytes{0x0F});
    const Bytes versionReply = AckAndFrame({21, 1, 1, 0, 0, 0, 0, 0});
};

TEST_F(ProgramTest, AnswersThroughTheLink) {
    const auto program = Start();
    Port port(link);
    ASSERT_TRUE(port.IsOpen());
    Select(port);
    EXPECT_EQ(port.Ask(version, versionReply.size()), versionReply);
    program->Say("quit");
    EXPECT_EQ(program->Status(), 0);
    EXPECT_FALSE(fs::is_symlink(link));
}

TEST_F(ProgramTest, PacesItsAnswers) {
    const auto program = Start({"--baud", "1200"});
    Port port(link);
    Select(port);
    const auto start = std::chrono::steady_clock::now();
    const std::size_t size = 1 + 5 + 100;
    EXPECT_EQ(port.Ask(EncodeFrame(Bytes{0x08, 0x00, 0x10, 0x00, 100 - 3}), size).size(), size);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    // 10 bytes out and 106 back, each of ten bits.
    EXPECT_GT(taken.count(), 0.96);
}

TEST_F(ProgramTest, OutlivesTheConsole) {
    const auto program = Start();
    {
        Port port(link);
        Select(port);
    }
    for (int round = 0; round < 3; ++round) {
        Port port(link);
        ASSERT_TRUE(port.IsOpen());
        EXPECT_EQ(port.Ask(version, versionReply.size()), versionReply) << round;
    }
}

TEST_F(ProgramTest, IsRawFromTheStart) {
    const auto program = Start();
    Port port(link);
    // A line discipline that edits would swallow or echo these.
    const Bytes nothing = {0x03, 0x04, 0x11, 0x13, 0x0A, 0x7F};
    port.Send(nothing);
    EXPECT_EQ(port.Receive(1, 50), Bytes{});
    Select(port);
}

#ifdef __linux__
TEST_F(ProgramTest, LosesWhatAClosedPortWouldLose) {
    const auto program = Start();
    {
        Port port(link);
        Select(port);
        program->Say("fault late 200");
        program->Until("ok\n");
        port.Send(version);
        EXPECT_EQ(port.Receive(1, 50), Bytes{});
    }
    usleep(400'000);
    Port port(link);
    EXPECT_EQ(port.Receive(1, 50), Bytes{});
    EXPECT_EQ(port.Ask(version, versionReply.size()), versionReply);
}
#endif

TEST_F(ProgramTest, HangUpIsSeenByTheConsole) {
    for (const char* word : {"hangup", "quit"}) {
        const auto program = Start();
        Port port(link);
        Select(port);
        program->Say(word);
        EXPECT_TRUE(port.HungUp());
        EXPECT_EQ(program->Status(), 0);
        EXPECT_FALSE(fs::is_symlink(link));
        EXPECT_FALSE(Port(link).IsOpen());
    }
}

TEST_F(ProgramTest, TakesCommandsWhileItServes) {
    const auto program = Start();
    Port port(link);
    Select(port);
    program->Say("silence Ridge Rain Gauge");
    EXPECT_EQ(program->Until("ok\n"), "ok\n");
    port.Send(version);
    EXPECT_EQ(port.Receive(1, 100), Bytes{});
    program->Say("wake Ridge Rain Gauge");
    program->Until("ok\n");
    EXPECT_EQ(port.Ask(version, versionReply.size()), versionReply);
    program->Say("truth Mill Street Pipe");
    EXPECT_NE(program->Until("ok\n").find("\nflow "), std::string::npos);
}

TEST_F(ProgramTest, TakesCommandsThroughAFifo) {
    const std::string fifo = folder.File("control");
    Program program({Site(), "--link", link, "--control", fifo});
    program.Until("\n");
    for (const char* line : {"counters\n", "hang", "up\n"}) {
        std::ofstream(fifo) << line;
    }
    EXPECT_NE(program.Until("drowned 0\nok\n").find("written 0"), std::string::npos);
    EXPECT_EQ(program.Status(), 0);
    EXPECT_FALSE(fs::exists(fifo));
}

TEST_F(ProgramTest, ServesOnWhenStandardInputEnds) {
    const auto program = Start();
    program->CloseInput();
    Port port(link);
    Select(port);
    const double before = program->ProcessorTime();
    usleep(200'000);
    EXPECT_LE(program->ProcessorTime() - before, 0.02);
    EXPECT_EQ(port.Ask(version, versionReply.size()), versionReply);
}

TEST_F(ProgramTest, RefusesControlThatIsNoFifo) {
    std::string output;
    EXPECT_EQ(StatusOf({Site(), "--link", link, "--control", Site()}, output), 1);
    EXPECT_NE(output.find("exists and is no FIFO"), std::string::npos) << output;
    EXPECT_FALSE(fs::is_symlink(link));
}

TEST_F(ProgramTest, TracesExchanges) {
    const auto program = Start({"--trace"});
    Port port(link);
    Select(port);
    port.Ask(version, versionReply.size());
    const std::string trace = program->Until("version");
    EXPECT_NE(trace.find("radio: AT+++ -> command mode\n"), std::string::npos) << trace;
    EXPECT_NE(trace.find("Ridge Rain Gauge: 0F version"), std::string::npos) << trace;
}

TEST_F(ProgramTest, ReplacesALinkThatWasLeft) {
    fs::create_symlink("/dev/nowhere", link);
    const auto program = Start();
    EXPECT_TRUE(Port(link).IsOpen());
}

TEST_F(ProgramTest, LeavesAFileAlone) {
    std::ofstream(link) << "mine";
    std::string output;
    EXPECT_EQ(StatusOf({Site(), "--link", link}, output), 1);
    EXPECT_NE(output.find("exists and is no link"), std::string::npos) << output;
    EXPECT_TRUE(fs::is_regular_file(link));
}

TEST_F(ProgramTest, LeavesTheLinkOfALaterRunAlone) {
    const auto first = Start();
    const auto second = Start();
    first->Say("quit");
    EXPECT_EQ(first->Status(), 0);
    EXPECT_TRUE(Port(link).IsOpen());
}

TEST_F(ProgramTest, SignalsEndItCleanly) {
    for (const int signal : {SIGINT, SIGTERM}) {
        const auto program = Start();
        program->Signal(signal);
        EXPECT_EQ(program->Status(), 0);
        EXPECT_FALSE(fs::is_symlink(link));
    }
}

TEST_F(ProgramTest, IdlesWithoutTheProcessor) {
    const auto program = Start();
    const double before = program->ProcessorTime();
    usleep(300'000);
    EXPECT_LE(program->ProcessorTime() - before, 0.02);
}

TEST_F(ProgramTest, LiftsAClaimThatAConsoleLeftBehind) {
    const auto program = Start();
    {
        Port port(link);
        ASSERT_EQ(ioctl(port.Fd(), TIOCEXCL), 0);
        Select(port);
    }
    usleep(50'000);
    Port port(link);
    int claimed = 1;
    ASSERT_EQ(ioctl(port.Fd(), TIOCGEXCL, &claimed), 0);
    EXPECT_EQ(claimed, 0);
}

TEST_F(ProgramTest, TellsLinesOfABadFile) {
    const std::string file = folder.File("bad.net");
    std::ofstream(file) << "[logger]\nname = A\n[analog]\ncolour = red\n";
    std::string output;
    EXPECT_EQ(StatusOf({file, "--link", link}, output), 3);
    EXPECT_EQ(output, file + ":4: no key \"colour\" in this section\n");
    EXPECT_EQ(StatusOf({folder.File("none.net"), "--link", link}, output), 3);
    EXPECT_NE(output.find("No such file"), std::string::npos) << output;
    EXPECT_EQ(StatusOf({folder.File(""), "--link", link}, output), 3);
}

TEST_F(ProgramTest, RefusesWrongCommandLines) {
    const std::vector<std::vector<std::string>> wrong = {
        {},
        {Site()},
        {"--link", link},
        {Site(), "--link"},
        {Site(), "--link", link, "--baud", "x"},
        {Site(), "--link", link, "--seed", "-1"},
        {Site(), "--link", link, "--fast"},
        {Site(), Site(), "--link", link},
    };
    for (const auto& arguments : wrong) {
        std::string output;
        EXPECT_EQ(StatusOf(arguments, output), 2);
        EXPECT_NE(output.find("try --help"), std::string::npos) << output;
    }
}

TEST_F(ProgramTest, HelpsWithItsUse) {
    std::string output;
    EXPECT_EQ(StatusOf({"--help"}, output), 0);
    EXPECT_NE(output.find("Usage: orvia-sim NETWORK-FILE --link PATH"), std::string::npos);
}

}  // namespace
}  // namespace simulator

#endif  // ORVIA_SIM_PROGRAM
