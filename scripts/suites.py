"""The suites that CTest knows of a build folder, and the Wine prefix and display that one of them runs on: what
scripts/run-suites and scripts/mutate share."""
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
    """Every suite of a build folder, by what CTest says; it says no command of a program that is not built yet, which
    only the file says that it reads."""
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
    """A Wine prefix and a display of its own; up from open() to close()."""

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

    def put_back(self, fresh):
        """Closes it, forgets what was written to its registry, and opens it again."""
        self.close()
        for name in ("system.reg", "user.reg", "userdef.reg"):
            shutil.copy2(fresh / name, self.prefix / name)
        self.open()


def run(suite, environment, limit, log, before=None):
    """Runs a suite to its end or for `limit` seconds of wall time. Gives the status, None when the limit ended it, and
    the seconds taken."""
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
