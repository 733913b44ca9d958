# Renaming: nothing is overwritten or confused, all comes back, and text is text on every way in and out. Each file
# holds the name it began with.
import os
import pathlib
import pty
import random
import re
import subprocess

from harness import IS_NATIVE, PROGRAM, CommandTest, main, native_only, windows_only

OMEGA, OHM = "\u03a9", "\u2126"
PRELOADED = os.environ.get("TAMRIX_AT_CALL", "")


class RenameTest(CommandTest):
    def make(self, *names, links=()):
        for name in names:
            path = os.path.join(os.fsencode(self.folder), b"tree", os.fsencode(name))
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "wb") as file:
                file.write(os.fsencode(name))
        for name, target in links:
            os.symlink(target, self.folder / "tree" / name)
        return self.tree()

    def tree(self):
        # Every path under the tree with the name its file began with, or where its link points.
        found = {}
        for folder, folders, files in os.walk(os.fsencode(self.folder / "tree")):
            for name in files + [each for each in folders if os.path.islink(os.path.join(folder, each))]:
                path = os.path.join(folder, name)
                text = os.readlink(path) if os.path.islink(path) else pathlib.Path(os.fsdecode(path)).read_bytes()
                found[os.fsdecode(os.path.relpath(path, os.fsencode(self.folder / "tree")))] = os.fsdecode(text)
        return found

    def forget(self):
        subprocess.run("rm -rf tree*", shell=True, check=True, cwd=self.folder)

    def at_call(self, number, then):
        self.environment.update(AT_CALL=str(number), THEN=then, LD_PRELOAD=PRELOADED,
                                ASAN_OPTIONS="verify_asan_link_order=0:detect_leaks=0")

    def undo(self, journal="tree.tamrix-journal", **keywords):
        self.environment.pop("LD_PRELOAD", None)
        return self.tamrix("rename --undo", journal, **keywords)


class Text(RenameTest):
    def test_names_are_text_on_every_way_in_and_out(self):
        decomposed, composed = "cafe\u0301", "caf\u00e9"
        for arguments, typed, printed, refused in (
                ([decomposed, "b"], "", f"{composed}\nb\n", ""), (["\u4e00", "b"], "", "b\n", "\u4e00: not a name in Mac"),
                ([], f"\ufeff{decomposed}\n\u0142\nb", f"{composed}\nb\n", "\u0142"), ([], "\ufeff", "", "")):
            self.assertEqual(self.tamrix("name to-windows --text utf-8", *arguments, typed=typed.encode(), named=refused,
                                         status=1 if refused else 0).decode(), printed)
        for name in self.json("name to-windows", OMEGA, OHM):  # one character of Mac Roman
            self.assertEqual((name["fromHex"], name["from"]), ("BD", OMEGA))
        for malformed in (b"\xff", b"\xc3", b"\xc0\xaf", b"\xed\xa0\x80", b"\xf4\x90\x80\x80"):
            self.tamrix("name to-windows --text utf-8", typed=malformed, status=1, named=f"\\x{malformed[0]:02X}")
        mark = self.tamrix("name to-mac --bytes", typed=b"caf\xe9\n\xef\xbb\xbf")
        self.assertEqual((mark[:5], len(mark)), (b"caf\x8e\n", 9))
        self.tamrix("name check --bytes --text utf-8 a", status=2, named="give one of")

    @native_only
    def test_where_no_characters_are_translated_macintosh_names_are_in_the_code_page(self):
        japanese = "\u8868\u30bd:"  # their trail bytes are backslashes
        self.make(japanese, "\u00e9")
        self.tamrix("rename --code-page 932 --to-windows --apply tree", status=1, named="\u00e9: not a name in this code")
        self.assertEqual(set(self.tree()), {"\u8868\u30bd[058]", "\u00e9"})
        self.assertEqual(self.json("name to-mac --code-page 949", "\uf95c")[0]["from"], "\uf95c", "its twin has other bytes")

    @windows_only
    def test_pipes_have_the_code_page_and_the_disk_has_every_name(self):
        self.assertEqual(self.tamrix("name to-windows", "\u00e9", typed=b""), b"\xe9\n")
        self.assertEqual(self.tamrix("name to-windows", typed=b"caf\xe9\n"), b"caf\xe9\n")
        self.assertEqual(self.tamrix("name to-windows", typed="\ufeff\u00e9\n".encode()), b"\xe9\n")
        self.tamrix("name to-mac --bytes", "\u03c0", status=2, named="not text of this code page")
        self.make("x\u03c0/a[064]", "xp/b[064]", "\u0142[064]")
        printed = self.tamrix("rename --to-mac --apply tree", status=1, named="\\u{142}[064]: not a name")
        self.assertEqual(sorted(printed.split(b"\n")[:-1]), [b"tree\\x\\u{3C0}\\a[064] -> a@", b"tree\\xp\\b[064] -> b@"])
        self.assertEqual(set(self.tree()), {"x\u03c0/a@", "xp/b@", "\u0142[064]"})


class Rename(RenameTest):
    def test_apply_does_what_the_dry_run_says_and_undo_takes_it_back(self):
        before = self.make("d[064]/e[096]/f[064]", "d[064]/plain", "g[064]", "g@", "see [047", "Cafe\u0301")
        planned = self.json("rename --to-mac tree", status=1)
        self.assertEqual(self.tree(), before)
        self.assertEqual(planned["summary"] | {"done": 0}, {
            "toRename": 4, "unchanged": 3, "collisions": 1, "reserved": 0, "tooLong": 0, "notText": 0, "refused": 0,
            "onlyComposed": 1, "wouldNotComeBack": 1, "done": 0, "left": 1, "leftToDo": 0})
        self.assertEqual([(row["from"], row["to"], row["reason"].split(":")[0]) for row in planned["entries"]
                          if row["status"] != "noted"],
                         [("f[064]", "f@", ""), ("e[096]", "e`", ""), ("Cafe\u0301", "Caf\u00e9", "only composed"),
                          ("d[064]", "d@", ""), ("g[064]", "g@", "collision")])
        done = self.json("rename --to-mac --apply tree", status=1)
        key = lambda row: (row["folder"], row["from"], row["to"], row["reason"])  # noqa: E731
        self.assertEqual(sorted(map(key, done["entries"])), sorted(map(key, planned["entries"])))
        self.assertEqual(set(self.tree()), {"d@/e`/f@", "d@/plain", "g[064]", "g@", "see [047", "Caf\u00e9"})
        self.tamrix("rename --to-mac tree", status=2, named="was renamed this way already")
        self.tamrix("rename --to-mac tree/d@", status=2, named="tree.tamrix-journal")
        self.json("rename --to-mac --force tree", status=1)
        self.undo(named="4 put back, 0 left with a reason")
        self.assertEqual(self.tree(), before)
        self.undo(named="0 put back")
        self.json("rename --to-mac tree", status=1)

    def test_never_more_than_is_meant(self):
        root = "/" if IS_NATIVE else "C:\\"
        before = self.make("a[064]")
        for arguments, named in ((["--to-mac", ""], "DIR is empty"), (["--to-mac", root], "a whole disk"), ([], "DIR"),
                                 (["--to-mac", "tree/a[064]"], "a[064]: not a folder"), (["tree"], "give one of"),
                                 (["--to-mac", "--to-windows", "tree"], "give one of"), (["--to-mac", "no"], "no: "),
                                 (["--to-mac", "--apply", "--journal", "tree/a[064]", "tree"], "a[064]: "),
                                 (["--undo", "tree/a[064]"], "not a journal"), (["--undo", "no", "tree"], "nothing else")):
            self.assertEqual(self.tamrix("rename", *arguments, status=2, named=named), b"")
        self.assertEqual(self.tree(), before)

    @native_only
    def test_nothing_is_overwritten_or_confused_and_all_comes_back(self):
        raw = ["\udc80", "\udcc4", "\udc83"]  # Macintosh 80 -> Windows C4 -> 83 -> C9: each takes the name of the next
        parts = ["A", "a", "\u00c4", "\u00e4", "\u00c9", "e", "\u0301", ":", ".", "[058]", "AUX", "con", " ", "\udcff", "\u0142"]
        for seed in range(25):
            numbers = random.Random(seed)
            bytes_only = ["--bytes"] * (seed % 5 == 0)
            names = {"".join(numbers.choices(parts + raw * len(bytes_only), k=numbers.randint(1, 3))) for _ in range(12)}
            names -= {".", ".."}
            before = self.make(*names)
            self.assertEqual(len(before), len(names))
            rows = self.json("rename --to-windows --apply tree", *bytes_only, status=(0, 1))["entries"]
            after = self.tree()
            self.assertEqual(sorted(after.values()), sorted(names))
            moved = {each for name, each in after.items() if name != each}
            wide = {bytes.fromhex(row["fromHex"]) for row in rows if row["status"] == "renamed"}
            self.assertEqual({os.fsencode(name) for name in moved}, wide)
            kept = {name for name, each in after.items() if not any(
                bytes.fromhex(row["fromHex"]) == os.fsencode(each) for row in rows if row["status"] == "left")}
            self.assertEqual(len({name.upper() for name in kept}), len(kept), names)
            for name in kept:
                self.assertFalse(re.search(r'^(AUX|CON) *(\.|$)|[ .]$|[":\udcff]', name, re.I) and not bytes_only, name)
            if moved:
                self.undo()
            self.assertEqual(self.tree(), before)
            self.forget()

    @native_only
    def test_names_that_windows_or_this_disk_does_not_keep_are_left_with_their_reason(self):
        names = {"con.txt": "device", "LPT1 .x": "device", "nul": "device", "x" * 252 + ":": "too long", "\udcff": "Mac Roman",
                 "Y": "differs in case", "y": "differs in case"}
        self.make(*names, "COM0", "con-x")
        rows = {row["from"] or "\udcff": row["reason"] for row in self.json("rename --to-windows tree", status=1)["entries"]}
        self.assertEqual(rows.keys(), names.keys())
        for name, reason in names.items():
            self.assertIn(reason, rows[name])
        self.forget()
        self.make("a[047]b", "c[000]", "Y", "y")
        self.tamrix("rename --to-mac tree", status=1, named=["slash", "zero byte", "refused by the disk: 2", "unchanged: 2"])

    @native_only
    def test_links_follow_what_they_point_to(self):
        before = self.make("d:/f:", "plain", links=[("a", "d:/f:"), ("b:", "./d:/../d:/"), ("c", "b:/f:"), ("d:/up", "../plain"),
                                                    ("e", f"{self.folder}/tree/d:"), ("o", "../out"), ("x", "gone:")])
        self.tamrix("rename --to-windows --apply tree", named="tree/o: leads out of the folder: ../out")
        self.assertEqual(self.tree(), {"d[058]/f[058]": "d:/f:", "plain": "plain", "a": "d[058]/f[058]", "c": "b[058]/f[058]",
                                       "b[058]": "./d[058]/../d[058]/", "d[058]/up": "../plain", "o": "../out", "x": "gone:",
                                       "e": f"{self.folder}/tree/d[058]"})
        self.undo()
        self.assertEqual(self.tree(), before)

    @native_only
    def test_killed_at_any_step_all_comes_back(self):
        names, links, number = ["d:/f:", "d:/g", "\udc80", "\udcc4", "\udc83"], [("l", "d:/f:")], 0
        while True:
            number += 1
            before = self.make(*names, links=links)
            self.at_call(number, "kill -KILL $PPID")
            killed = subprocess.run([*PROGRAM, "rename", "--bytes", "--to-windows", "--apply", "tree"],
                                    cwd=self.folder, env=self.environment, capture_output=True).returncode
            if killed == 0:
                break
            self.at_call(number % 7 + 1, "kill -KILL $PPID")
            if os.path.getsize(self.folder / "tree.tamrix-journal"):
                subprocess.run([*PROGRAM, "rename", "--undo", "tree.tamrix-journal"], cwd=self.folder,
                               env=self.environment, capture_output=True)
                self.undo(named=" 0 left with a reason, 0 left to do")
            self.assertEqual(self.tree(), before, number)
            self.forget()
        self.assertGreater(number, 16)
        journal = (self.folder / "tree.tamrix-journal").read_bytes()
        self.undo()
        for cut in range(journal.index(b"in\t"), journal.index(b"name\t\xc4"), 9):  # no step is done before its whole line is there
            (self.folder / "tree.torn").write_bytes(journal[:cut])
            self.undo("tree.torn", named="0 put back, 0 left")
            self.undo("tree.torn")
        self.assertEqual(self.tree(), before)

    @native_only
    def test_a_disk_that_changes_is_noticed_and_an_interrupt_ends_in_order(self):
        for call, then, named in ((4, "rm tree/b:", "tree/b: is not there"), (4, "mkdir 'tree/b[058]'", "b[058] is there now"),
                                  (5, "kill -TERM $PPID", "stopped: interrupted")):
            self.make("a:", "b:", "c:")
            self.at_call(call, then)
            self.tamrix("rename --to-windows --apply tree", status=1, named=[named.replace("tree/", ""), "left to do"])
            self.assertIn("c:", self.tree())
            self.undo(named="1 put back" if "kill" not in then else "2 put back")
            self.assertIn("a:", self.tree())
            self.forget()
        self.make("a:", "b:", "c:")
        self.tamrix("rename --to-windows --apply --journal j tree")
        os.rename(self.folder / "tree/a[058]", self.folder / "tree/elsewhere")
        (self.folder / "tree/b:").write_bytes(b"new")
        self.undo("j", status=1, named=["a[058]: has changed meanwhile: it is gone: a:", "b[058]: has changed meanwhile: both"])
        self.assertEqual(self.tree(), {"elsewhere": "a:", "b:": "new", "b[058]": "b:", "c:": "c:"})

    @native_only
    def test_paths_may_be_longer_than_the_system_takes_at_once(self):
        here = os.open(self.folder, os.O_RDONLY)
        os.mkdir(self.folder / "tree")
        os.chdir(self.folder / "tree")
        for depth in range(200):
            os.mkdir(f"{depth:030}:")
            os.chdir(f"{depth:030}:")
        os.fchdir(here)
        self.tamrix("rename --to-windows --apply tree", named="200 renamed, 0 left with a reason, 0 left to do")
        self.undo(named="200 put back, 0 left")

    @native_only
    def test_a_terminal_sees_how_far_it_is_after_a_second(self):
        self.make("a:", "b:")
        self.at_call(4, "sleep 2.1")
        terminal, end = pty.openpty()
        subprocess.run([*PROGRAM, "rename", "--to-windows", "--apply", "tree"], cwd=self.folder, env=self.environment,
                       stderr=end, stdout=subprocess.DEVNULL, check=True)
        self.assertIn(b"\r1 of 2", os.read(terminal, 9999))


if __name__ == "__main__":
    main()
