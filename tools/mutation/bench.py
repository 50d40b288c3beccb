"""A copy of the tree with a build of its own, in which one mistake at a time is tried."""

import hashlib
import json
import os
import re
import shlex
import shutil
import signal
import subprocess
import threading
import time
from pathlib import Path

# Limits of a test program: seconds of the processor, which no other program can take from it,
# and of the clock, for one that waits for ever.
LEAST_LIMIT = 10
TIMES_BASELINE = 5
CLOCK_TO_PROCESSOR = 30
MEMORY_KIB = 6 * 1024 * 1024
OUTPUT_BLOCKS = 2 * 1024 * 1024  # of 512 bytes
SLOW_TEST = 0.1  # seconds; such tests run when all others have passed
BUILD_LIMIT = 3600

_FLAGS = "-w -D_GLIBCXX_ASSERTIONS"
_FAILED = re.compile(r"\[  FAILED  \] ([^\s,]+)")
_TARGET = re.compile(r"^(\w+_tests): phony$", re.MULTILINE)


class Stopped(Exception):
    """The run is being ended from outside."""


class BenchError(Exception):
    """The tree itself does not build or pass, or a tool is missing."""


def files_of(root):
    """The files of a tree as they stand at this moment, with their modes."""
    listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard", "-z"], cwd=root,
                            capture_output=True, check=True).stdout
    paths = {name: Path(root, name) for name in listed.decode().split("\0") if name}
    return {name: (path.read_bytes(), path.stat().st_mode & 0o777)
            for name, path in paths.items() if path.is_file()}


class Bench:
    """The copy, its build and its programs."""

    def __init__(self, folder, jobs, forms=False):
        self.tree = Path(folder)
        self.build_folder = self.tree / "build"
        self.jobs = jobs
        self.forms = forms
        self.stop = threading.Event()
        self._temporary = self.tree.parent / (self.tree.name + ".tmp")
        self._objects = {}
        self._optimized = {}
        self._env = dict(
            os.environ, CCACHE_DIR=str(self.tree.parent / "ccache"), CCACHE_MAXSIZE="3G",
            CCACHE_BASEDIR=str(self.tree), CCACHE_NOHASHDIR="1", TMPDIR=str(self._temporary),
            QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8")

    # ----- the tree

    def copy(self, files):
        """Brings the copy up to date, touching only what differs."""
        self.tree.mkdir(parents=True, exist_ok=True)
        for name, (content, mode) in files.items():
            target = self.tree / name
            if not target.exists() or target.read_bytes() != content:
                target.parent.mkdir(parents=True, exist_ok=True)
                target.write_bytes(content)
                target.chmod(mode)
        for path in self.tree.rglob("*"):
            inside = path.relative_to(self.tree)
            if inside.parts[0] != "build" and path.is_file() and inside.as_posix() not in files:
                path.unlink()

    def prepare(self):
        """Builds the tree as it stands. Throws if it does not build."""
        if not (self.build_folder / "build.ninja").exists():
            self._configure()
        status, log = self._ninja(["all"])
        if status != 0:
            raise BenchError(f"the tree does not build:\n{log[-4000:]}")
        self._objects = {path: _hash_of(path) for path in self._object_files()}

    def programs(self):
        """Test programs that the build knows."""
        listing = subprocess.run(["ninja", "-C", self.build_folder, "-t", "targets", "all"],
                                 capture_output=True, text=True, check=True).stdout
        return sorted(set(_TARGET.findall(listing)))

    def _configure(self):
        linker = next((name for name in ("mold", "lld", "gold") if shutil.which("ld." + name) or
                       shutil.which(name)), None)
        command = ["cmake", "-G", "Ninja", "-S", self.tree, "-B", self.build_folder,
                   "-DCMAKE_BUILD_TYPE=Debug", "-DCMAKE_CXX_FLAGS_DEBUG=-O0 -g0",
                   f"-DCMAKE_CXX_FLAGS={_FLAGS}", "-DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON",
                   f"-DORVIA_FORMS={'ON' if self.forms else 'OFF'}"]
        if linker:
            command.append(f"-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld={linker}")
        done = subprocess.run([str(part) for part in command], env=self._env, text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        if done.returncode != 0:
            raise BenchError(f"the build cannot be configured:\n{done.stdout[-4000:]}")

    # ----- building

    def write(self, path, code):
        (self.tree / path).write_text(code, encoding="utf-8")

    def build(self, programs):
        """Builds test programs; False if the code is not accepted."""
        status, log = self._ninja(programs)
        if status == 0:
            return True
        if "error:" not in log and "undefined " not in log:
            raise BenchError(f"the build broke off:\n{log[-4000:]}")
        return False

    def changed_objects(self, since):
        """Whether an object built since then differs from that of the tree as it stands."""
        return any(_hash_of(path) != self._objects.get(path) for path in self._object_files()
                   if path.stat().st_mtime_ns >= since)

    def same_when_optimized(self, path, mutated, original):
        """Whether a source and its mutant come out as the same code at -O2: then they are equal."""
        command = self._optimizing_command(path)
        if command is None:
            return False
        if path not in self._optimized:
            self.write(path, original)
            self._optimized[path] = self._compile(command)
        self.write(path, mutated)
        code = self._compile(command)
        return code is not None and code == self._optimized[path]

    def _optimizing_command(self, path):
        commands = json.loads((self.build_folder / "compile_commands.json").read_text())
        wanted = str(self.tree / path)
        for entry in commands:
            if entry["file"] == wanted:
                words = shlex.split(entry["command"])
                return ["-O2" if word == "-O0" else word
                        for word in words[:words.index("-o")]] + ["-c", wanted]
        return None

    def _compile(self, command):
        output = self.tree / "build" / "optimized.o"
        done = self._run([*command, "-o", str(output)], self.build_folder, BUILD_LIMIT)
        return _hash_of(output) if done.status == 0 else None

    def _object_files(self):
        return self.build_folder.glob("**/*.o")

    def _ninja(self, targets):
        done = self._run(["ninja", "-j", str(self.jobs), *targets], self.build_folder, BUILD_LIMIT)
        return done.status, done.output

    # ----- testing

    def measure(self, program):
        """A run on the tree as it stands: seconds of the processor and those of each test."""
        report = self.tree / "build" / "tests.json"
        done = self.run_tests(program, None, 1200, f"--gtest_output=json:{report}")
        if done.status != 0:
            raise BenchError(f"{program} fails without any mistake, {done.reason()}:\n"
                             f"{done.output[-4000:]}")
        tests = {}
        for suite in json.loads(report.read_text())["testsuites"]:
            for test in suite["testsuite"]:
                tests[f"{suite['name']}.{test['name']}"] = float(test["time"].rstrip("s"))
        return {"seconds": done.processor, "tests": tests}

    def run_tests(self, program, only, limit, *more):
        shutil.rmtree(self._temporary, ignore_errors=True)
        self._temporary.mkdir(parents=True)
        command = [str(self.build_folder / "bin" / program), "--gtest_brief=1",
                   "--gtest_fail_fast", *more]
        if only:
            command.append(f"--gtest_filter={only}")
        limits = f"ulimit -c 0; ulimit -S -t {limit}; ulimit -v {MEMORY_KIB}; " \
                 f"ulimit -f {OUTPUT_BLOCKS}; exec \"$@\""
        return self._run(["sh", "-c", limits, "sh", *command], self.tree,
                         limit * CLOCK_TO_PROCESSOR + 60)

    def _run(self, command, folder, clock):
        """Runs a command in a group of processes of its own, and ends that with it."""
        begin = time.monotonic()
        output = self.tree.parent / (self.tree.name + ".out")
        with open(output, "wb") as sink:
            process = subprocess.Popen(command, cwd=folder, env=self._env, stdout=sink,
                                       stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL,
                                       start_new_session=True)
            late, usage, status = False, None, None
            while status is None:
                ended, code, usage = os.wait4(process.pid, os.WNOHANG)
                if ended:
                    status = process.returncode = os.waitstatus_to_exitcode(code)
                elif self.stop.is_set() or time.monotonic() - begin > clock:
                    late = not self.stop.is_set()
                    status, usage = _end(process)
                else:
                    time.sleep(0.01)
        _end_group(process.pid)
        if self.stop.is_set():
            raise Stopped
        processor = usage.ru_utime + usage.ru_stime
        with open(output, "rb") as text:
            text.seek(max(0, output.stat().st_size - 200_000))
            return Done(status, text.read().decode("utf-8", "replace"), processor,
                        late or status == -signal.SIGXCPU)


class Done:
    """How a program ended."""

    def __init__(self, status, output, processor, timed_out):
        self.status, self.output = status, output
        self.processor, self.timed_out = processor, timed_out

    def reason(self):
        """What noticed the mistake."""
        if self.timed_out:
            return "time limit"
        failed = _FAILED.search(self.output)
        if failed:
            return failed.group(1)
        return f"signal {-self.status}" if self.status < 0 else f"status {self.status}"


def _end(process):
    """Asks a process to end, so that it can end its own, and does not ask a second time."""
    os.killpg(process.pid, signal.SIGTERM)
    for _ in range(300):
        ended, code, usage = os.wait4(process.pid, os.WNOHANG)
        if ended:
            break
        time.sleep(0.01)
    else:
        os.killpg(process.pid, signal.SIGKILL)
        _, code, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(code)
    return process.returncode, usage


def _end_group(group):
    try:
        os.killpg(group, signal.SIGKILL)
    except ProcessLookupError:
        pass


def _hash_of(path):
    return hashlib.sha1(Path(path).read_bytes()).hexdigest()
