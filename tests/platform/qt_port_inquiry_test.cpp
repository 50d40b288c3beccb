#include "platform/qt/qt_port_inquiry.h"

#include <gtest/gtest.h>

#ifndef _WIN32

#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSerialPort>
#include <QTemporaryDir>
#include <array>
#include <fstream>

#include "platform/qt/text_qt.h"
#include "support/qt/pseudo_terminal.h"

namespace {

/// A number that no process has.
constexpr int NoProcess = 0x7FFFFFF0;

/// Another program that has a device open.
class OtherProgram {
 public:
    explicit OtherProgram(const QString& device) {
        program_.start(
            QStringLiteral("/bin/sh"),
            {QStringLiteral("-c"), QStringLiteral("exec 3<>\"$0\"; echo; read line"), device});
        if (!program_.waitForReadyRead()) {
            throw std::runtime_error("the shell did not open the device");
        }
    }
    ~OtherProgram() {
        program_.closeWriteChannel();
        program_.waitForFinished();
    }
    [[nodiscard]] int Number() const { return static_cast<int>(program_.processId()); }

 private:
    QProcess program_;
};

/// Whoever runs the tests, an account without rights beyond the file's.
class AsNobody {
 public:
    AsNobody() : before_(::geteuid()) {
        constexpr uid_t Nobody = 65534;
        if (before_ == 0 && ::seteuid(Nobody) != 0) {
            throw std::runtime_error("no other account");
        }
    }
    ~AsNobody() {
        if (::seteuid(before_) != 0) {
            std::abort();
        }
    }

 private:
    uid_t before_;
};

class QtPortInquiryTest : public ::testing::Test {
 protected:
    void SetUp() override {
        Link(FromQt(far_.Device()));
        // Whoever the account is, it sees where the link leads.
        ASSERT_EQ(::chmod(folder_.path().toLocal8Bit(), 0755), 0);
    }

    void Link(const std::string& target) const {
        const QString link = QDir(folder_.path()).filePath(QStringLiteral("COM5"));
        QFile::remove(link);
        ASSERT_TRUE(QFile::link(ToQt(target), link));
    }
    [[nodiscard]] PortCondition Condition() { return inquiry_.ConditionOf(5); }
    /// Locks the near end as other programs do.
    [[nodiscard]] std::string Lock(const std::string& contents) const {
        std::string name = FromQt(far_.Device()).substr(5);
        name.replace(name.find('/'), 1, "_");
        const std::string path = FromQt(locks_.filePath(QStringLiteral("LCK.."))) + name;
        std::ofstream(path) << contents;
        return path;
    }

    PseudoTerminal far_;
    QTemporaryDir folder_;
    QTemporaryDir locks_;
    QtPortInquiry inquiry_{folder_.path(), {.Locks = {FromQt(locks_.path())}}};
};

TEST_F(QtPortInquiryTest, AFreeDeviceHasNothingAgainstIt) {
    const PortCondition condition = Condition();
    EXPECT_EQ(condition.Device, FromQt(far_.Device()));
    EXPECT_TRUE(condition.Exists);
    EXPECT_TRUE(condition.IsSerial);
    EXPECT_TRUE(condition.Rights.MayOpen);
    EXPECT_TRUE(condition.Users.empty());
    EXPECT_FALSE(condition.Lock);
    EXPECT_FALSE(condition.Busy);
    EXPECT_TRUE(inquiry_.UsedPorts().empty());
}

TEST_F(QtPortInquiryTest, ALinkToADeviceThatIsGoneNamesIt) {
    Link("/nowhere/by-id/converter");
    const PortCondition condition = Condition();
    EXPECT_FALSE(condition.Exists);
    EXPECT_EQ(condition.Device, "/nowhere/by-id/converter");
}

TEST_F(QtPortInquiryTest, AFileIsNoSerialPort) {
    const QString file = folder_.filePath(QStringLiteral("file"));
    std::ofstream(FromQt(file)) << "text";
    Link(FromQt(file));
    EXPECT_TRUE(Condition().Exists);
    EXPECT_FALSE(Condition().IsSerial);
}

TEST_F(QtPortInquiryTest, NamesTheProgramThatHasTheDevice) {
    const OtherProgram other(far_.Device());
    const PortCondition condition = Condition();
    ASSERT_EQ(condition.Users.size(), 1U);
    EXPECT_EQ(condition.Users[0], (PortUser{other.Number(), "sh"}));
    const auto used = inquiry_.UsedPorts();
    ASSERT_EQ(used.size(), 1U);
    EXPECT_EQ(used.begin()->first, 5);
    EXPECT_EQ(used.begin()->second, (PortUser{other.Number(), "sh"}));
}

TEST_F(QtPortInquiryTest, ItsOwnUseIsNoUseByOthers) {
    QSerialPort own;
    own.setPortName(far_.Device());
    ASSERT_TRUE(own.open(QIODevice::ReadWrite));
    EXPECT_TRUE(Condition().Users.empty());
    EXPECT_TRUE(inquiry_.UsedPorts().empty());
}

TEST_F(QtPortInquiryTest, ALockNamesItsProgramAndWhetherThatRuns) {
    const std::string file = Lock("      " + std::to_string(::getppid()) + "\n");
    PortCondition condition = Condition();
    ASSERT_TRUE(condition.Lock);
    EXPECT_EQ(condition.Lock->File, file);
    EXPECT_EQ(condition.Lock->Owner.Process, ::getppid());
    EXPECT_FALSE(condition.Lock->Owner.Program.empty());
    EXPECT_TRUE(condition.Lock->OwnerRuns);
    EXPECT_EQ(inquiry_.UsedPorts().count(5), 1U);

    EXPECT_EQ(Lock(std::to_string(NoProcess) + "\n"), file);
    condition = Condition();
    ASSERT_TRUE(condition.Lock);
    EXPECT_EQ(condition.Lock->Owner, (PortUser{NoProcess, ""}));
    EXPECT_FALSE(condition.Lock->OwnerRuns);
    EXPECT_TRUE(inquiry_.UsedPorts().empty()) << "nobody uses it";
}

TEST_F(QtPortInquiryTest, ReadsLocksAsTextAndAsNumbers) {
    EXPECT_EQ(OwnerOfLock("      1234\n"), 1234);
    EXPECT_EQ(OwnerOfLock("77\nprogram\nhost\n"), 77);
    const int process = 0x01020304;
    EXPECT_EQ(OwnerOfLock({reinterpret_cast<const char*>(&process), sizeof process}), process);
    EXPECT_EQ(OwnerOfLock(""), 0);
    EXPECT_EQ(OwnerOfLock("-5\n"), 0);
    EXPECT_EQ(OwnerOfLock("nothing of the kind"), 0);
}

TEST_F(QtPortInquiryTest, ADeviceThatTheAccountMayNotOpenIsNotAllowed) {
    const QByteArray device = far_.Device().toLocal8Bit();
    ASSERT_EQ(::chmod(device, 0), 0);
    const AsNobody somebody;
    const PortCondition condition = Condition();
    EXPECT_TRUE(condition.Exists);
    EXPECT_FALSE(condition.Rights.MayOpen);
    EXPECT_FALSE(condition.Rights.Operator.empty());
    EXPECT_EQ(condition.Rights.Group, "") << "nobody but its owner may";
}

TEST_F(QtPortInquiryTest, AMemberOfTheGroupWhoseSessionDoesNotKnowIsSeenAsSuch) {
    constexpr gid_t Nobodys = 65534;
    const bool asRoot = ::geteuid() == 0;
    const QByteArray device = far_.Device().toLocal8Bit();
    ASSERT_EQ(::chown(device, static_cast<uid_t>(-1), asRoot ? Nobodys : ::getegid()), 0);
    ASSERT_EQ(::chmod(device, asRoot ? 0660 : 0060), 0);
    const AsNobody somebody;
    const PortRights rights = Condition().Rights;
    EXPECT_FALSE(rights.MayOpen);
    EXPECT_FALSE(rights.Group.empty());
    EXPECT_TRUE(rights.InGroup);
}

}  // namespace

#endif
