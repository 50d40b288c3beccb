#!/usr/bin/env python3
"""A pseudo-terminal that sends back what comes, until it gets a "!", upon which it hangs up.

    echo_port.py LINK          the link to it; "ready" is printed when it is there"""

import os
import sys
import tty
from pathlib import Path


def main(words):
    if len(words) != 1:
        print(__doc__, file=sys.stderr)
        return 2
    link = Path(words[0])
    own, other = os.openpty()
    tty.setraw(own)
    tty.setraw(other)
    link.unlink(missing_ok=True)
    link.symlink_to(os.ttyname(other))
    print("ready", flush=True)
    # The other side stays open here, so that the console may close and open it.
    while True:
        received = os.read(own, 4096)
        if b"!" in received:
            link.unlink()
            os.close(other)
            os.close(own)
            return 0
        os.write(own, received)


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
