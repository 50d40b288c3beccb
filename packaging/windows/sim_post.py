#!/usr/bin/env python3
"""Starts simulators for consoles that run under wine, which can start no program of this system.

    sim_post.py POST SIMULATOR PORTS

Who wants one makes a folder in POST with a file "order": the arguments, a line each. What is put behind the file "said" is told
to the simulator, what it says stands in "heard", and "ended" comes when it has ended. Ports are links of that name, in lower
case, in the folder PORTS. Ends when its standard input does."""

import re
import select
import subprocess
import sys
import time
from pathlib import Path

PAUSE = 0.002  # seconds


def here(argument, ports):
    """An argument as this system has it: drive Z is the root, a port is a link."""
    if re.fullmatch(r"COM\d+", argument):
        return str(ports / argument.lower())
    return argument[2:].replace("\\", "/") if argument[:2].upper() == "Z:" else argument


class Simulator:
    def __init__(self, folder, program, ports):
        self.folder = folder
        arguments = (folder / "order").read_text(encoding="utf-8").split("\n")
        with open(folder / "heard", "wb") as heard:
            self.process = subprocess.Popen([program] + [here(argument, ports) for argument in arguments],
                                            stdin=subprocess.PIPE, stdout=heard, stderr=subprocess.STDOUT)
        self.said = open(folder / "said", "rb")

    def step(self):
        """Hands on what was said; False when the simulator has ended."""
        words = self.said.read()
        if words:
            try:
                self.process.stdin.write(words)
                self.process.stdin.flush()
            except BrokenPipeError:
                pass
        if self.process.poll() is None:
            return True
        self.said.close()
        (self.folder / "ended").touch()
        return False


def main(words):
    if len(words) != 3:
        print(__doc__, file=sys.stderr)
        return 2
    post, program, ports = Path(words[0]), words[1], Path(words[2])
    known, running = set(), []
    while True:
        for order in post.glob("*/order"):
            if order.parent not in known:
                known.add(order.parent)
                running.append(Simulator(order.parent, program, ports))
        running = [simulator for simulator in running if simulator.step()]
        if select.select([sys.stdin], [], [], 0)[0] and not sys.stdin.buffer.read1(1):
            break
        time.sleep(PAUSE)
    for simulator in running:
        simulator.process.terminate()
        simulator.process.wait()
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
