#ifndef ORVIA_TESTS_SUPPORT_SMALL_DISK_H
#define ORVIA_TESTS_SUPPORT_SMALL_DISK_H

#ifndef _WIN32

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>

namespace testing_support {

/// While it lives, no file of this process grows beyond so many bytes, as on a disk that has no
/// more room.
class SmallDisk {
 public:
    explicit SmallDisk(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN)) {
        EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &before_), 0);
        const rlimit small{bytes, before_.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    }
    ~SmallDisk() {
        ::setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;

 private:
    void (*handler_)(int);
    rlimit before_{};
};

}  // namespace testing_support

#endif

#endif  // ORVIA_TESTS_SUPPORT_SMALL_DISK_H
