#include "platform/qt/qt_password_keeper.h"

#include <QCoreApplication>
#include <QMetaObject>
#ifdef ORVIA_KEYCHAIN
#include <qt6keychain/keychain.h>
#endif

#include "platform/qt/text_qt.h"

namespace {

/// The name that the keyring lists the program under.
[[maybe_unused]] QString Service() {
    return QStringLiteral("Orvia");
}

}  // namespace

#ifdef ORVIA_KEYCHAIN

namespace {

std::string WordsOf(const QKeychain::Job& job) {
    const std::string words = FromQt(job.errorString());
    return words.empty() ? "There is no keyring." : words;
}

}  // namespace

std::optional<std::string> QtPasswordKeeper::WhyNot() const {
    return std::nullopt;
}

void QtPasswordKeeper::Ask(const std::string& name, Told told) {
    auto* job = new QKeychain::ReadPasswordJob(Service());
    job->setKey(ToQt(name));
    QObject::connect(job, &QKeychain::Job::finished, job,
                     [job, told = std::move(told)](QKeychain::Job*) {
                         const bool none = job->error() == QKeychain::EntryNotFound;
                         const bool done = job->error() == QKeychain::NoError;
                         told({.Done = done || none,
                               .Password = done ? FromQt(job->textData()) : std::string(),
                               .Words = done || none ? std::string() : WordsOf(*job)});
                     });
    job->start();
}

void QtPasswordKeeper::Keep(const std::string& name, const std::string& password, Told told) {
    auto* job = new QKeychain::WritePasswordJob(Service());
    job->setKey(ToQt(name));
    job->setTextData(ToQt(password));
    QObject::connect(
        job, &QKeychain::Job::finished, job, [told = std::move(told)](QKeychain::Job* done) {
            const bool good = done->error() == QKeychain::NoError;
            told({.Done = good, .Password = {}, .Words = good ? std::string() : WordsOf(*done)});
        });
    job->start();
}

#else

std::optional<std::string> QtPasswordKeeper::WhyNot() const {
    return "This program was built without the keyring.";
}

void QtPasswordKeeper::Ask(const std::string&, Told told) {
    QMetaObject::invokeMethod(
        qApp, [this, told = std::move(told)] { told({.Words = *WhyNot()}); }, Qt::QueuedConnection);
}

void QtPasswordKeeper::Keep(const std::string& name, const std::string&, Told told) {
    Ask(name, std::move(told));
}

#endif
