"""Lists the CTest suites of a build folder and runs them, for Windows builds with a Wine prefix and a display. Used by
scripts/run-suites and scripts/mutate."""
import collections
import contextlib
import json
import os
import pathlib
import re
import shlex
import shutil
import signal
import subprocess
import time

TOP = pathlib.Path(__file__).resolve().parent.parent

Suite = collections.namedtuple("Suite", "name command environment folder labels locks limit")


def listed(build):
    """Every suite of a build folder, as listed by CTest. For a program that is not built yet CTest prints no command; it
    is taken from CTest's test file instead."""
    unbuilt = {}
    for file in pathlib.Path(build).rglob("CTestTestfile.cmake"):
        for name, words in re.findall(r"^add_test\((?:\[=*\[)?(.*?)(?:\]=*\])? (.*)\)$", file.read_text(), re.M):
            unbuilt[name] = shlex.split(words)
    said = subprocess.run(["ctest", "--test-dir", str(build), "--show-only=json-v1"], check=True, capture_output=True,
                          text=True).stdout
    for test in json.loads(said)["tests"]:
        about = {entry["name"]: entry["value"] for entry in test.get("properties", [])}
        environment = dict(line.split("=", 1) for line in about.get("ENVIRONMENT", []))
        yield Suite(test["name"], test.get("command") or unbuilt[test["name"]], environment,
                    about.get("WORKING_DIRECTORY", str(build)), about.get("LABELS", []), about.get("RESOURCE_LOCK", []),
                    about.get("TIMEOUT", 0))


class Desktop:
    """A Wine prefix with its own display, running from open() to close()."""

    def __init__(self, prefix, language=None):
        self.prefix, self.language, self.process = pathlib.Path(prefix), language, None

    def open(self):
        kept = {name: value for name, value in os.environ.items() if name not in ("DISPLAY", "TAMRIX_WITHIN")}
        kept.update({"LC_ALL": self.language} if self.language else {})
        self.process = subprocess.Popen(
            [str(TOP / "scripts/with-wine"), "sh", "-c", "env -0 | base64 -w 0; echo; exec cat >/dev/null"],
            env=dict(kept, PREFIX=str(self.prefix)), stdin=subprocess.PIPE, stdout=subprocess.PIPE,
            stderr=subprocess.DEVNULL)
        said = subprocess.run(["base64", "-d"], input=self.process.stdout.readline(), check=True,
                              capture_output=True).stdout.decode()
        self.environment = dict(line.split("=", 1) for line in said.split("\0") if "=" in line)

    def close(self):
        if self.process:
            self.process.stdin.close()
            self.process.wait()
            self.process = None

    def reset(self, fresh):
        """Closes the desktop, restores its original registry, and opens it again."""
        self.close()
        for name in ("system.reg", "user.reg", "userdef.reg"):
            shutil.copy2(fresh / name, self.prefix / name)
        self.open()


def run(suite, environment, limit, log, before=None):
    """Runs a suite for at most `limit` seconds of wall time. Returns its status, or None if the limit ended it, and the
    seconds that it took."""
    started = time.monotonic()
    with open(log, "wb") as file:
        ran = subprocess.Popen(suite.command, cwd=suite.folder, env=dict(environment, **suite.environment),
                               stdin=subprocess.DEVNULL, stdout=file, stderr=file, start_new_session=True,
                               preexec_fn=before)
        try:
            status = ran.wait(timeout=limit)
        except subprocess.TimeoutExpired:
            status = None
        with contextlib.suppress(ProcessLookupError):
            os.killpg(ran.pid, signal.SIGKILL)
        ran.wait()
    return status, time.monotonic() - started
