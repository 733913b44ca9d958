# Renaming: nothing is overwritten or confused, all comes back, and text is text on every way in and out. Each file
# holds the name it began with.
import os
import random
import shutil
import subprocess
from resource import RLIMIT_NOFILE

from harness import IS_NATIVE, CommandTest, main, native_only, on_windows_95, windows_only

TO_WINDOWS = "rename --to-windows --apply tree"
JOURNAL = "tree.tamrix-journal"
UNDO = "rename --undo " + JOURNAL


class RenameTest(CommandTest):
    def make(self, *names, links=()):
        shutil.rmtree(self.folder / "tree", ignore_errors=True)
        (self.folder / JOURNAL).unlink(missing_ok=True)
        for name in names:
            path = self.folder / "tree" / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(os.fsencode(name))
        for name, target in links:
            os.symlink(target, self.folder / "tree" / name)
        return self.tree()

    def tree(self):
        # Every path under the tree with the name its file began with, or where its link points.
        return {str(path.relative_to(self.folder / "tree")):
                os.readlink(path) if path.is_symlink() else os.fsdecode(path.read_bytes())
                for path in (self.folder / "tree").rglob("*") if path.is_symlink() or path.is_file()}


class Text(RenameTest):
    def test_names_are_text_on_every_way_in_and_out(self):
        apart, one, line = "cafe\u0301", "caf\u00e9", "name to-windows --text utf-8 "
        malformed = ("\udcff", "\udcc3", "\udcc3a", "\udcc0\udcaf", "\udced\udca0\udc80", "\udcf4\udc90\udc80\udc80")
        self.rows([(f"{line} {apart} b", f"{one}\nb\n"), (f"{line} \u4e00 b", 1, "\u4e00: cannot be represented", "b\n"),
                   (f"{line} <<< '\ufeff{apart}\n\u0142\nb'", 1, "\u0142: ", f"{one}\nb\n"), (f"{line} <<< \ufeff", ""),
                   *((f"{line} <<< {name}", 1, f"\\x{ord(name[0]) - 0xDC00:02X}") for name in malformed),
                   ("name check --bytes --text utf-8 a", 2, "use either")])
        for name in self.json("name to-windows \u03a9 \u2126"):  # both omegas are one character of Mac Roman
            self.assertEqual((name["fromHex"], name["from"]), ("BD", "\u03a9"))
        marked = self.tamrix("name to-mac --bytes <<< 'caf\udce9\n\ufeff'")
        self.assertEqual((marked[:5], len(os.fsencode(marked))), ("caf\udc8e\n", 9), "with --bytes a mark is a name")

    def test_where_no_characters_are_translated_macintosh_names_are_in_the_code_page(self):
        page, self.environment["LC_ALL"] = "--code-page 932" if IS_NATIVE else "", "ja_JP.UTF-8"
        self.rows([(page + " name to-windows --text utf-8 <<< '\u8868\u30bd:\n\u00e9'", 1,  # trail bytes: backslashes
                    "\u00e9: cannot be represented in the ANSI", "\u8868\u30bd[058]\n"),
                   *([(f"name to-mac --code-page {page} {name}", name + "\n") for page, name in  # composed, 949 changes
                      ((949, "\uf95c"), (936, "\u4e2d"), (950, "\u4e2d"), (1251, "\u0416"))] * IS_NATIVE)])

    @windows_only
    def test_pipes_have_the_code_page_and_the_disk_has_every_name(self):
        self.rows([("name to-mac --bytes \u03c0", 2, "cannot be represented in"),
                   *((f"name to-windows {way}", "\udce9\n") for way in ("\u00e9", "<<< \udce9", "<<< \ufeff\u00e9"))])
        before = self.make("x\u03c0/a[064]", "xp/b[064]", "\u0142[064]", "e\u0301", "\u00e9[064]", links=[("l", "xp")])
        wide = {"tree\\x\\u{3C0}\\a[064] -> a@", "tree\\e\\u{301} -> \udce9 (Unicode composition only)",
                "tree\\\udce9[064] -> \udce9@"}
        for journal, more in (("j\u00e9", wide), ("k\u00e9 --bytes", {"tree\\\udce9[064] -> \udc8e@"})):
            printed = self.tamrix(f"rename --to-mac --apply tree --journal {journal}", status=1, named="l: the link")
            self.assertEqual(set(printed.splitlines()), {"tree\\xp\\b[064] -> b@"} | more)
            self.tamrix("rename --undo " + journal.split()[0])
            self.assertEqual(self.tree(), before)
        for name in ("con.txt", "Y", "y"):
            (self.folder / "tree" / name).touch()
        self.tamrix("rename --to-windows tree", status=1, named=["con.txt: reserved: device name", "y: collision"])
        console, end = self.terminal()
        self.tamrix("name to-mac \u0161", stdout=end)
        self.assertIn("\u2211".encode(), os.read(console, 9999), "a console shows what the code page lacks")


class Rename(RenameTest):
    def test_apply_does_what_the_dry_run_says_and_undo_takes_it_back(self):
        before = self.make("d[064]/e[096]/f[064]", "d[064]/plain", "g[064]", "g@", "see [047")
        counts = {"toRename": 3, "unchanged": 3, "collisions": 1, "wouldNotComeBack": 1, "left": 1}
        for options, status, done in (("", "would rename", {}), (" --apply", "renamed", {"done": 3})):
            self.assertEqual(self.tree(), before)
            said = self.json("rename --to-mac tree" + options, status=1)
            self.assertEqual({reason: count for reason, count in said["summary"].items() if count}, counts | done)
            self.assertEqual(said["journal"].endswith(JOURNAL), bool(done))
            self.assertEqual(sorted((f'{row["folder"]}/{row["from"]}'.replace("\\", "/"), row["to"], row["status"])
                                    for row in said["entries"]), [
                ("tree/d[064]", "d@", status), ("tree/d[064]/e[096]", "e`", status),
                ("tree/d[064]/e[096]/f[064]", "f@", status), ("tree/g@", "g@", "noted"), ("tree/g[064]", "g@", "left")])
        self.assertEqual(set(self.tree()), {"d@/e`/f@", "d@/plain", "g[064]", "g@", "see [047"})
        self.rows([("rename --to-mac tree", 2, "has already been renamed in"), ("rename --to-mac tree/d@", 2, JOURNAL)])
        self.json("rename --to-mac --force tree", status=1)
        self.tamrix(UNDO, named="3 reverted, 0 skipped")
        self.tamrix(UNDO, named="0 reverted, 0 skipped")
        self.assertEqual(self.tree(), before)
        self.tamrix("rename --to-mac --apply tree/d[064]")
        self.rows([("rename --to-mac tree", 2, ["tree: a folder in it has", "d[064].tamrix-journal"])])
        self.json("rename --to-windows tree", status=1)

    def test_never_more_than_is_meant(self):
        before, root = self.make("a[064]"), "/" if IS_NATIVE else "C:\\\\"
        title, head = "tamrix rename journal 1", "\nto-mac\ttext\ntree\tgone\n"
        for status, named, text in ((1, "stopped: gone: ", title + head), (2, "(line 4)", title + head + "in\t\\q\n"),
                                    (2, "(line 5)", title + head + "in\ta\nlink\ta\tb\tc\td\n"),
                                    (2, "not a journal of tamrix rename (line 1)", "kept" + head)):
            (self.folder / "kept").write_text(text)
            self.tamrix("rename --undo kept", status=status, named=named)
        self.rows([("rename --to-mac ''", 2, "DIR is empty"), (f"rename --to-mac {root}", 2, "a whole disk"),
                   ("rename", 2, "DIR"), ("rename tree", 2, "use either"), ("rename --to-mac no", 2, "no: "),
                   ("rename --to-mac tree/a[064]", 2, "a[064]: not a folder"),
                   ("rename --to-mac --apply --journal tree/j tree", 2, "tree/j: the journal must not be in"),
                   ("rename --to-mac --apply --journal kept tree", 2, "kept: "),
                   *((f"rename --undo j {more}", 2, "only the")
                     for more in ("tree", "--to-mac", "--to-windows", "--apply", "--journal=k"))])
        self.assertEqual((self.tree(), (self.folder / "kept").read_text()), (before, "kept" + head))

    @native_only
    def test_nothing_is_overwritten_or_confused_and_all_comes_back(self):
        parts = [*"Aa\u00c4\u00e4e\u0301:. \r\\\udcff\u0142", "[058]", "AUX", "con"]
        for seed in range(20):
            numbers, bytes_only = random.Random(seed), seed % 5 == 0
            names = {"".join(numbers.choices(parts, k=numbers.randint(1, 3))) for _ in range(12)} - {".", ".."}
            before = self.make(*names)
            printed = self.json(TO_WINDOWS, *["--bytes"] * bytes_only, status=(0, 1))["entries"]
            rows = {os.fsdecode(bytes.fromhex(row["fromHex"])): row["status"] for row in printed}
            after = {old: new for new, old in self.tree().items()}
            self.assertEqual(after.keys(), names)
            self.assertEqual({name for name in names if after[name] != name},
                             {name for name, status in rows.items() if status == "renamed"})
            kept = [new for old, new in after.items() if rows.get(old) != "left"]
            self.assertEqual(len({name.upper() for name in kept}), len(kept), names)
            for name in kept:
                self.assertNotRegex(name, r'(?i)^(AUX|CON) *(\.|$)|[ .]$|[":]')
                self.assertTrue(bytes_only or "\udcff" not in name and "e\u0301" not in name and "\u0142" not in name)
            if (self.folder / JOURNAL).exists():
                self.tamrix(UNDO)
            self.assertEqual(self.tree(), before)

    @native_only
    def test_names_that_windows_or_this_disk_does_not_keep_are_left_with_their_reason(self):
        devices = ("AUX", "con.txt", "COM1.doc", "nul", "prn .a.b", "lpt9", "conin$")
        others = "\udcff\x80\u07ff\u0800\ud7ff\ue000\uffff\U00010000\U0010ffff"  # the last ones of each length, and the first
        names = {**dict.fromkeys(devices, "device"), **dict.fromkeys(others, "Mac Roman"), "x" * 251 + ":": "too long",
                 "Y": "in case", "y": "in case", "e\u0301:": "another entry", "\u00e9:": "another entry"}
        self.make(*names, "COM0", "com10", "lpt.1", "con-x", "x" * 250 + ":")
        said = self.json(TO_WINDOWS, status=1)
        rows = {row["from"] or "\udcff": row["reason"] for row in said["entries"] if row["status"] == "left"}
        self.assertLessEqual({"reserved": 7, "notText": 9, "tooLong": 1}.items(), said["summary"].items())
        self.assertEqual(rows.keys(), names.keys())
        self.assertTrue(all(reason in rows[name] for name, reason in names.items()), rows)
        self.make("a[047]b", "c[000]", "Y", "y")
        self.tamrix("rename --to-mac tree", status=1, named=["slash", "zero byte", "by the disk: 2", "nothing to rename"])
        self.make("\u5341\u6642.", "aa\r\x7f")
        self.rows([("rename --to-windows --bytes --code-page 932 tree", 1, "Windows drops a final period",
                    "tree/aa\\x0D\\x7F -> aa[013][127]\n")])

    @native_only
    def test_links_follow_what_they_point_to(self):
        tree = f"{self.folder}/tree"
        before = self.make("d:/f:", "p", links=[
            ("a", "d:/f:"), ("b:", "./d:/../d:/"), ("c", "b:/f:"), ("d:/up", "../d:/f:"), ("e", tree + "/d:"),
            ("i", "../tree/d:"), ("o", "../out"), ("x", "gone:")])
        planned = {row["from"]: row for row in self.json("rename --to-windows tree")["entries"] if "newTarget" in row}
        self.assertEqual([planned["a"][name] for name in ("status", "oldTarget", "newTarget")],
                         ["would point", "d:/f:", "d[058]/f[058]"])
        self.tamrix(TO_WINDOWS, named="tree/o: the link's target is outside the folder: ../out")
        self.assertEqual(self.tree(), {
            "d[058]/f[058]": "d:/f:", "p": "p", "a": "d[058]/f[058]", "b[058]": "./d[058]/../d[058]/",
            "c": "b[058]/f[058]", "d[058]/up": "../d[058]/f[058]", "e": tree + "/d[058]", "i": "../tree/d[058]", "o": "../out",
            "x": "gone:"})
        (self.folder / "tree/a").unlink()
        os.symlink("p", self.folder / "tree/a")
        self.tamrix(UNDO, status=1, named="tree/a: has another target now")
        self.assertEqual(self.tree(), before | {"a": "p"})

    @native_only
    def test_killed_at_any_step_all_comes_back(self):
        kill = "kill -KILL $PPID"
        for number in range(1, 19):  # before each of seventeen writes, flushes, renames and links, and then not at all
            # Macintosh 80 -> Windows C4 -> 83 -> C9: each takes the name of the next.
            before = self.make("d:/f:", "d:/g", "\udc80", "\udcc4", "\udc83", links=[("l", "d:/f:")])
            self.tamrix(TO_WINDOWS + " --bytes", at_call=number, then=kill, status=-9 * (number < 18), named=None)
            journal = (self.folder / JOURNAL).read_bytes()
            if journal:
                self.tamrix(UNDO, at_call=number % 9 + 1, then=kill, status=(0, -9), named=None)
                self.assertNotIn("\\x", self.tamrix(UNDO, named=" 0 skipped, 0 remaining"), "bytes stay bytes")
            self.assertEqual(self.tree(), before, number)
        for cut in range(journal.index(b"in\t"), journal.index(b"name\t\xc4"), 9):
            (self.folder / "torn").write_bytes(journal[:cut])  # no step is done before its whole line is there
            self.tamrix("rename --undo torn", named="0 reverted, 0 skipped")
            self.tamrix("rename --undo torn")
        self.assertEqual(self.tree(), before)

    @native_only
    def test_a_disk_that_changes_is_noticed_and_an_interrupt_ends_in_order(self):
        for call, then, named, done in ((4, "rm tree/b:", "b: was removed", 1), (2, "exit 28", "No space left on device", 0),
                                        (4, "touch 'tree/b[058]'", "b[058] now exists", 1),
                                        (3, "exit 5", "stopped: Input/output error", 0),
                                        (5, "kill -INT $PPID", "stopped: interrupted", 2)):
            self.make("a:", "b:", "c:")
            self.tamrix(TO_WINDOWS, at_call=call, then=then, status=1, named=[named, f", {3 - done} remaining\n"])
            self.tamrix(UNDO, named=f"{done} reverted, 0 skip")
            self.assertLessEqual({"a:", "c:"}, self.tree().keys())
        self.tamrix(TO_WINDOWS, at_call=4, then="exit 5", status=1, named=["a:: Input/output error", "2 renamed, 1 skip"])
        self.tamrix(UNDO + "-2", at_call=1, then="touch 'tree/a[058]'", named="2 reverted, 0 skip")
        self.tamrix(TO_WINDOWS + " --journal j", at_call=4, then="exit 22", status=1, named="2 renamed, 1 skip")
        self.tamrix("rename --undo j", at_call=1, then="kill -TERM $PPID", status=1, named="stopped: interrupted")
        self.tamrix("rename --undo j", at_call=1, then="printf new > tree/b:; exit 22", status=1, named="name already exists")
        self.tamrix("rename --undo j", status=1, named="b[058]: both names now exist")
        self.assertEqual(self.tree(), {"a:": "a:", "a[058]": "", "b:": "new", "b[058]": "b:", "c:": "c:"})

        self.make("d:/f:", links=[("l", "d:/f:")])
        self.tamrix(TO_WINDOWS, at_call=5, then="ln -sfn p tree/l", status=1, named=["l has another", ", 1 remaining"])

    @native_only
    def test_paths_may_be_long_and_a_terminal_sees_how_far_it_is(self):
        subprocess.run("mkdir tree; cd tree; for i in $(seq 300); do mkdir $(printf %030d: $i); "
                       "cd -P $(printf %030d: $i); done", shell=True, cwd=self.folder, check=True)
        self.tamrix("rename --to-mac tree", status=1, named="Too many open files", limit=(RLIMIT_NOFILE, (4, 4)))
        self.tamrix(TO_WINDOWS, at_call=4, then="sleep 2.1", named="300 renamed, 0 skipped", limit=(RLIMIT_NOFILE, (32, 32)))
        terminal, end = self.terminal()
        self.assertEqual(self.tamrix(UNDO, at_call=4, then="sleep 2.1", stderr=end).count("\n"), 300)
        self.assertRegex(os.read(terminal, 9999), rb"\r\d+ of 300\r {30}\r")


@on_windows_95
class OnOldWindows(Rename):
    def test_names_that_the_code_page_lacks_are_left(self):
        before = self.make("x\u03c0/a[064]", "xp/b[064]", "\u0142[064]")
        self.tamrix("rename --to-mac --apply tree", status=1, named=["another entry under this name", "the ANSI code page"])
        self.assertEqual(self.tree(), before)


if __name__ == "__main__":
    main()
