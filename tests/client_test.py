#!/usr/bin/env python3
"""client_test.py PROGRAM...: runs the tamrix command as its users do. PROGRAM is the native program or, for the shipped
one, "wine" and its path. Names and arguments are bytes; expectations are written from the rules, not from output."""
import json
import os
import pathlib
import resource
import subprocess
import sys
import tempfile
import unittest

PROGRAM = [os.path.abspath(word) if os.path.exists(word) else word for word in sys.argv[1:]]
IS_NATIVE = len(PROGRAM) == 1
native_only = unittest.skipUnless(IS_NATIVE, "the native program's own option")


def setUpModule():
    """Under Wine, one program that waits for input keeps the system up between the others, which then start at once.
    Nobody reads what the first two print: Wine's own processes inherit their output and hold it open."""
    if not IS_NATIVE:
        silent = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
        waiting = subprocess.Popen([*PROGRAM, "name", "to-mac"], stdin=subprocess.PIPE, **silent)
        unittest.addModuleCleanup(lambda: (waiting.stdin.close(), waiting.wait()))
        subprocess.run([*PROGRAM, "--version"], check=True, **silent)


class ClientTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def run_tamrix(self, *arguments, typed=b"", status=0, full_disk=False):
        # Wine takes arguments in the locale's encoding; this locale is always there, and is Western.
        environment = dict(os.environ, XDG_DATA_HOME=str(self.folder / "data"), LC_ALL="C.UTF-8")
        # A limit on the size of files stands for a full disk; with the signal ignored, it is an error of writing.
        limit = (lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (8, 8))) if full_disk else None
        ran = subprocess.run([*PROGRAM, *arguments], input=typed, capture_output=True, cwd=self.folder,
                             env=environment, preexec_fn=limit, restore_signals=not full_disk)
        self.assertEqual(ran.returncode, status, (arguments, ran.stdout, ran.stderr))
        return ran

    def output(self, *arguments, **keywords):
        return self.run_tamrix(*arguments, **keywords).stdout

    def json(self, *arguments, **keywords):
        return json.loads(self.output(*arguments, "--json", **keywords).decode("utf-8"))

    def complaint(self, *arguments, status):
        return self.run_tamrix(*arguments, status=status).stderr


class Rename(ClientTest):
    def make(self, *names):
        for name in names:
            path = os.path.join(os.fsencode(self.folder), b"tree", name)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "wb") as file:
                file.write(name)

    def tree(self):
        top = os.path.join(os.fsencode(self.folder), b"tree")
        paths = [os.path.join(folder, name) for folder, _, names in os.walk(top) for name in names]
        return {os.path.relpath(path, top): pathlib.Path(os.fsdecode(path)).read_bytes() for path in paths}

    def test_a_dry_run_changes_nothing(self):
        self.make(b"d[064]/a[091]", b"plain")  # 91, the bracket, is not in the set
        before = self.tree()
        self.assertEqual([row["status"] for row in self.json("rename", "--to-mac", "tree")], ["would rename"])
        self.assertEqual(len(self.output("rename", "--to-mac", "tree").splitlines()), 1)
        self.assertEqual(self.tree(), before)

    def test_names_are_given_deepest_first(self):
        self.make(b"d[064]/e[096]/f[064]", b"d[064]/plain")
        rows = self.json("rename", "--to-mac", "--apply", "tree")
        self.assertEqual([(row["to"], row["status"]) for row in rows],
                         [("f@", "renamed"), ("e`", "renamed"), ("d@", "renamed")])
        self.assertEqual(self.tree(), {b"d@/e`/f@": b"d[064]/e[096]/f[064]", b"d@/plain": b"d[064]/plain"})

    def test_nothing_is_overwritten(self):
        self.make(b"a[064]", b"a@", b"ok[096]")
        before = self.tree()
        ran = self.run_tamrix("rename", "--to-mac", "--apply", "tree", status=1)
        self.assertIn(b"collision", ran.stderr)
        self.assertIn(b"a[064]", ran.stderr)
        after = self.tree()
        self.assertEqual(after.pop(b"ok`"), before.pop(b"ok[096]"))
        self.assertEqual(after, before)

    @native_only
    def test_two_that_would_get_one_name_both_stay(self):
        # Macintosh 87 is E1 in Windows, and quoted on its way there.
        self.make(b"x[135]", b"x\xe1", b"y[064]")
        ran = self.run_tamrix("rename", "--to-mac", "--apply", "tree", status=1)
        self.assertEqual(ran.stderr.count(b"collision"), 2)
        self.assertEqual(set(self.tree()), {b"x[135]", b"x\xe1", b"y@"})

    @native_only
    def test_a_name_that_becomes_free_is_taken(self):
        self.make(b"\x80", b"\xc4", b"\x83")  # 80 -> C4 -> 83 -> C9: each takes the name of the one before it
        self.output("rename", "--to-windows", "--apply", "tree")
        self.assertEqual(self.tree(), {b"\xc4": b"\x80", b"\x83": b"\xc4", b"\xc9": b"\x83"})

    @native_only
    def test_what_the_disk_does_not_take_is_left(self):
        self.make(b"a[047]b", b"c[000]")
        ran = self.run_tamrix("rename", "--to-mac", "--apply", "tree", status=1)
        self.assertIn(b"slash", ran.stderr)
        self.assertIn(b"zero byte", ran.stderr)
        self.assertEqual(set(self.tree()), {b"a[047]b", b"c[000]"})

    @native_only
    def test_links_are_not_followed_and_text_is_text(self):
        self.make("caf\u00e9:".encode(), b"plain")
        os.mkdir(self.folder / "other")
        (self.folder / "other" / "x:").touch()
        os.symlink("../other", self.folder / "tree" / "link:")
        self.output("rename", "--text", "utf-8", "--to-windows", "--apply", "tree")
        self.assertIn("caf\u00e9[058]".encode(), self.tree())
        self.assertTrue((self.folder / "tree" / "link[058]").is_symlink())
        self.assertTrue((self.folder / "other" / "x:").exists())

    @unittest.skipIf(IS_NATIVE, "names that differ only in case stand in one native folder")
    def test_names_that_differ_only_in_case_collide(self):
        self.make(b"x[064]", b"X@")
        ran = self.run_tamrix("rename", "--to-mac", "--apply", "tree", status=1)
        self.assertIn(b"collision", ran.stderr)
        self.assertEqual(set(self.tree()), {b"x[064]", b"X@"})


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
