/* Loaded before wine (LD_PRELOAD), gives a pseudo-terminal the modem lines that it lacks: all of them
 * are raised, and the count of received bytes grows whenever bytes wait. Without an answer to these
 * three requests wine ends every wait for bytes, as if the port were gone. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <errno.h>
#include <linux/serial.h>
#include <stdarg.h>
#include <string.h>
#include <sys/ioctl.h>

typedef int (*ioctl_call)(int, unsigned long, ...);

static ioctl_call system_ioctl(void) {
    static ioctl_call call;
    if (!call) {
        call = (ioctl_call)dlsym(RTLD_NEXT, "ioctl");
    }
    return call;
}

static int is_modem_request(unsigned long request) {
    return request == TIOCMGET || request == TIOCMSET || request == TIOCMBIS ||
           request == TIOCMBIC || request == TIOCGICOUNT;
}

static void answer(unsigned long request, void* argument, int waiting) {
    static int received;
    if (request == TIOCMGET) {
        *(int*)argument = TIOCM_CTS | TIOCM_DSR | TIOCM_CAR | TIOCM_DTR | TIOCM_RTS;
    } else if (request == TIOCGICOUNT) {
        struct serial_icounter_struct* counts = argument;
        memset(counts, 0, sizeof *counts);
        if (waiting > 0) {
            ++received;
        }
        counts->rx = received;
    }
}

int ioctl(int file, unsigned long request, ...) {
    va_list arguments;
    va_start(arguments, request);
    void* argument = va_arg(arguments, void*);
    va_end(arguments);
    const int before = errno;
    const int result = system_ioctl()(file, request, argument);
    if (result == 0 || !is_modem_request(request) || (errno != ENOTTY && errno != EINVAL)) {
        return result;
    }
    int waiting = 0;
    if (system_ioctl()(file, FIONREAD, &waiting) != 0) {
        errno = ENOTTY;  /* no terminal at all */
        return -1;
    }
    answer(request, argument, waiting);
    errno = before;
    return 0;
}
