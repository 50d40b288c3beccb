// Figures of the whole console on a real pseudo-terminal: how soon it can be used, what it costs
// while it waits and while it samples, how soon a reply is taken, how long a large book takes.

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "console/book_operations.h"
#include "link/port.h"
#include "platform/qt/text_qt.h"
#include "whole_program/console_run.h"
#include "whole_program/measure_load.h"
#include "whole_program/measure_uploads.h"
#include "whole_program/sim_process.h"

namespace whole_program {
namespace {

using Clock = std::chrono::steady_clock;

double Milliseconds(Clock::duration duration) {
    return std::chrono::duration<double, std::milli>(duration).count();
}

/// Seconds since this process was started, exec and loading of libraries included.
double SecondsSinceStart() {
    std::ifstream stat("/proc/self/stat");
    const std::string all{std::istreambuf_iterator<char>(stat), std::istreambuf_iterator<char>()};
    std::istringstream fields(all.substr(all.rfind(')') + 2));
    std::string field;
    constexpr int StartTimeField = 20;  // counted behind the name
    for (int i = 0; i < StartTimeField; ++i) {
        fields >> field;
    }
    std::ifstream uptime("/proc/uptime");
    double up = 0;
    uptime >> up;
    return up - std::stod(field) / static_cast<double>(::sysconf(_SC_CLK_TCK));
}

constexpr int Sites = 30;

/// A network of loggers, and the book to it.
void WriteSite(const QString& folder, const QString& book) {
    std::ofstream net(FromQt(QDir(folder).filePath(QStringLiteral("sites.net"))));
    std::ofstream entries(FromQt(book));
    net << "[network]\nstart = now\nbaud = 38400\n";
    for (int i = 0; i < Sites; ++i) {
        const std::string mac = "00A0960000" + std::to_string(10 + i);
        net << "[logger]\nname = Site " << i << "\nchannel = 10\nmac = " << mac
            << "\nrecords = 1000\n";
        for (int channel = 0; channel < 8; ++channel) {
            net << "[analog]\nunits = Feet\nlimits = 0 20\nsignal = sine mean=10 swing=5 hours=1\n";
        }
        entries << "\"Site " << i << "\", 10, " << mac << "\r\n";
    }
}

void PrintLoad(const char* what, ConsoleRun& console, int milliseconds,
               const std::function<void()>& step) {
    const Load load;
    step();
    console.LeaveAlone(milliseconds);
    load.Print(what);
}

/// Another end of a pseudo-terminal that answers each request with 24 bytes and notes when they
/// went out.
class Answerer {
 public:
    explicit Answerer(const QString& link)
        : link_(link), master_(::posix_openpt(O_RDWR | O_NOCTTY)) {
        ::grantpt(master_);
        ::unlockpt(master_);
        QFile::remove(link);
        QFile::link(QString::fromLocal8Bit(::ptsname(master_)), link);
        slave_ = ::open(::ptsname(master_), O_RDWR | O_NOCTTY);
        thread_ = std::thread([this] { Answer(); });
    }
    ~Answerer() {
        ends_ = true;
        thread_.join();
        ::close(slave_);
        ::close(master_);
        QFile::remove(link_);
    }
    Answerer(const Answerer&) = delete;
    Answerer& operator=(const Answerer&) = delete;

    static constexpr int Reply = 24;
    std::atomic<Clock::time_point> LastByte{Clock::time_point{}};

 private:
    void Answer() {
        std::array<char, 64> request{};
        const std::array<char, Reply> reply{};
        while (!ends_) {
            pollfd ready{master_, POLLIN, 0};
            if (::poll(&ready, 1, 50) > 0 && ::read(master_, request.data(), request.size()) > 0) {
                std::this_thread::sleep_for(std::chrono::milliseconds(7));
                // Noted before, not after: the console may well be the faster of the two.
                LastByte = Clock::now();
                if (::write(master_, reply.data(), reply.size()) != Reply) {
                    return;
                }
            }
        }
    }

    QString link_;
    int master_;
    int slave_ = -1;
    std::atomic<bool> ends_ = false;
    std::thread thread_;
};

void MeasureReplies(const Home& home) {
    constexpr int Rounds = 300;
    Answerer answerer(home.PortLink());
    ConsoleRun console;
    Link& link = console.State().LinkRecord;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, &tick, [&link] {
        if (link.WaitTicks > 0) {
            --link.WaitTicks;
        }
    });
    tick.start(100);
    if (!comm::OpenPort(link, console.Window(), 1, "115200,N,8,1")) {
        std::printf("no port\n");
        return;
    }
    std::vector<double> delays;
    for (int i = 0; i < Rounds; ++i) {
        link.MSComm1.ClearInBuffer();
        comm::SendText(link, "?");
        comm::WaitForBytes(link, 8, Answerer::Reply);
        delays.push_back(Milliseconds(Clock::now() - answerer.LastByte.load()));
    }
    comm::ClosePort(link);
    std::sort(delays.begin(), delays.end());
    std::printf("%-58s %8.3f ms (95 %%: %.3f ms)\n", "a reply is taken after its last byte, median",
                delays[Rounds / 2], delays[Rounds * 95 / 100]);
}

void MeasureLargeBook(ConsoleRun& console) {
    AddressBook& book = console.State().Book;
    book.Entries.Reset();
    for (int i = 0; i < 10000; ++i) {
        book.Entries.Append({.Name = "Pump station number " + std::to_string(i)});
    }
    const auto start = Clock::now();
    RefreshClientList(book, console.Window());
    QApplication::processEvents();
    std::printf("%-58s %8.1f ms\n", "a book of 10,000 entries is listed",
                Milliseconds(Clock::now() - start));
}

/// Opens the windows of these entries, their bars in sight, and lets them come to rest.
void OpenClients(ConsoleRun& console, int first, int last) {
    for (int client = first; client <= last; ++client) {
        const auto window = console.OpenClient(client);
        console.Click(QStringLiteral("cmdGetSettings"));
        console.Click(QStringLiteral("cmdMeter"), window.get());
    }
    constexpr int Milliseconds = 2000;
    ConsoleRun::RunFor(Milliseconds);
}

void Measure(const QString& simulator, const QString& folder, const Home& home, int seconds) {
    SimProcess sim(simulator, QDir(folder).filePath(QStringLiteral("sites.net")), home.PortLink());
    ConsoleRun console;
    const double before = SecondsSinceStart();
    double usable = 0;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        if (usable == 0 && QApplication::activeModalWidget() != nullptr) {
            usable = SecondsSinceStart();
        }
    });
    watch.start(1);
    console.Start();
    watch.stop();
    constexpr double Splash = 1;
    std::printf("%-58s %8.2f s (and %.2f s of splash)\n",
                "from the start of Load to the connect dialog", usable - before - Splash, Splash);
    constexpr int Few = 10;
    OpenClients(console, 1, Few);
    PrintLoad("connected and idle, ten windows open", console, seconds * 1000, [] {});
    PrintLoad("sampling continuously, ten windows open", console, seconds * 1000,
              [&] { console.Click(QStringLiteral("cmdSampleContinuously")); });
    console.Click(QStringLiteral("cmdSampleContinuously"));
    ConsoleRun::RunFor(2000);
    OpenClients(console, Few + 1, Sites);
    PrintLoad("connected and idle, thirty windows with bars open", console, seconds * 1000, [] {});
    console.Choose(QStringLiteral("mnuTrace"));
    PrintLoad("the same, and the trace", console, seconds * 1000, [] {});
    console.Window().CloseAllChildForms();
    MeasureLargeBook(console);
    console.Close();
}

}  // namespace
}  // namespace whole_program

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: orvia-measure SIMULATOR [SECONDS]\n");
        return 2;
    }
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    QApplication application(argc, argv);
    std::printf("%-58s %8.2f s\n", "from exec to the application object",
                whole_program::SecondsSinceStart());
    const QTemporaryDir folder;
    const QString book = folder.filePath(QStringLiteral("sites.obk"));
    whole_program::WriteSite(folder.path(), book);
    const whole_program::Home home(book);
    const QString simulator = QString::fromLocal8Bit(argv[1]);
    whole_program::MeasureReplies(home);
    whole_program::MeasureUploads(simulator, folder.filePath(QStringLiteral("sites.net")), home);
    whole_program::Measure(simulator, folder.path(), home, argc > 2 ? std::atoi(argv[2]) : 60);
    return 0;
}
