#include "whole_program/sim_channel.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QThread>

namespace whole_program {

namespace {

constexpr int Patience = 10000;  // milliseconds

#ifndef _WIN32

class ProcessChannel final : public SimChannel {
 public:
    ProcessChannel(const QString& program, const QStringList& arguments) {
        process_.setProcessChannelMode(QProcess::MergedChannels);
        process_.start(program, arguments);
    }
    ~ProcessChannel() override {
        process_.write("quit\n");
        if (!process_.waitForFinished(Patience)) {
            process_.kill();
            process_.waitForFinished(Patience);
        }
    }

    void Say(const QString& line) override { process_.write(line.toUtf8() + '\n'); }
    QString Hear() override {
        while (!process_.canReadLine()) {
            if (!process_.waitForReadyRead(Patience)) {
                return {};
            }
        }
        return QString::fromUtf8(process_.readLine()).trimmed();
    }

 private:
    QProcess process_;
};

#else

/// Two files in a folder of its own: what is said is put behind the one, what is heard is read from
/// the other.
class PostChannel final : public SimChannel {
 public:
    PostChannel(const QString& post, const QStringList& arguments) {
        static int started = 0;
        folder_ = QStringLiteral("%1/%2-%3")
                      .arg(post)
                      .arg(QCoreApplication::applicationPid())
                      .arg(++started);
        QDir().mkpath(folder_);
        said_.setFileName(folder_ + QStringLiteral("/said"));
        static_cast<void>(said_.open(QIODevice::WriteOnly));
        QFile order(folder_ + QStringLiteral("/order.new"));
        static_cast<void>(order.open(QIODevice::WriteOnly));
        order.write(arguments.join(QLatin1Char('\n')).toUtf8());
        order.close();
        order.rename(folder_ + QStringLiteral("/order"));
    }
    ~PostChannel() override {
        Say(QStringLiteral("quit"));
        static_cast<void>(
            WaitFor([this] { return QFile::exists(folder_ + QStringLiteral("/ended")); }));
    }

    void Say(const QString& line) override {
        said_.write(line.toUtf8() + '\n');
        said_.flush();
    }
    QString Hear() override {
        QByteArray line;
        const bool heard = WaitFor([this, &line] {
            if (!heard_.isOpen()) {
                heard_.setFileName(folder_ + QStringLiteral("/heard"));
                static_cast<void>(heard_.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
            }
            pending_ += heard_.readAll();
            const auto end = pending_.indexOf('\n');
            line = pending_.left(end);
            pending_.remove(0, end < 0 ? 0 : end + 1);
            return end >= 0;
        });
        return heard ? QString::fromUtf8(line).trimmed() : QString();
    }

 private:
    template <typename Done>
    static bool WaitFor(const Done& done) {
        QElapsedTimer elapsed;
        elapsed.start();
        while (!done()) {
            if (elapsed.hasExpired(Patience)) {
                return false;
            }
            QThread::msleep(2);
        }
        return true;
    }

    QString folder_;
    QFile said_;
    QFile heard_;
    QByteArray pending_;
};

#endif

}  // namespace

std::unique_ptr<SimChannel> StartSimulator(const QString& program, const QStringList& arguments) {
#ifndef _WIN32
    return std::make_unique<ProcessChannel>(program, arguments);
#else
    return std::make_unique<PostChannel>(program, arguments);
#endif
}

}  // namespace whole_program
