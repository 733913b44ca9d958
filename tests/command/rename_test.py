# Renaming: nothing is overwritten or confused, all comes back, and text is text on every way in and out. Each file
# holds the name it began with.
import os
import pathlib
import pty
import random
import shutil
import subprocess

from harness import IS_NATIVE, PROGRAM, CommandTest, main, native_only, windows_only

OMEGA, OHM = "\u03a9", "\u2126"
TO_WINDOWS = "rename --to-windows --apply tree"
JOURNAL = "tree.tamrix-journal"


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

    def at_call(self, number, then, line, **options):
        # Runs a line, and the shell's `then` before call `number` of those that change the disk.
        preloaded = {"AT_CALL": str(number), "THEN": then, "LD_PRELOAD": os.environ["TAMRIX_AT_CALL"],
                     "ASAN_OPTIONS": "verify_asan_link_order=0:detect_leaks=0"}
        return subprocess.run([*PROGRAM, *line.split()], cwd=self.folder, env=self.environment | preloaded,
                              **{"stdout": subprocess.PIPE, "stderr": subprocess.PIPE} | options)

    def undo(self, journal=JOURNAL, **keywords):
        return self.tamrix("rename --undo", journal, **keywords)


class Text(RenameTest):
    def test_names_are_text_on_every_way_in_and_out(self):
        apart, one = "cafe\u0301", "caf\u00e9"
        for arguments, typed, printed, refused in (
                ([apart, "b"], "", f"{one}\nb\n", ""), (["\u4e00", "b"], "", "b\n", "\u4e00: not a name in Mac Roman"),
                ([], f"\ufeff{apart}\n\u0142\nb", f"{one}\nb\n", "\u0142"), ([], "\ufeff", "", "")):
            self.assertEqual(self.tamrix("name to-windows --text utf-8", *arguments, typed=typed.encode(),
                                         named=refused, status=1 if refused else 0).decode(), printed)
        for name in self.json("name to-windows", OMEGA, OHM):  # one character of Mac Roman
            self.assertEqual((name["fromHex"], name["from"]), ("BD", OMEGA))
        for malformed in (b"\xff", b"\xc3", b"\xc0\xaf", b"\xed\xa0\x80", b"\xf4\x90\x80\x80"):
            self.tamrix("name to-windows --text utf-8", typed=malformed, status=1, named=f"\\x{malformed[0]:02X}")
        mark = self.tamrix("name to-mac --bytes", typed=b"caf\xe9\n\xef\xbb\xbf")
        self.assertEqual((mark[:5], len(mark)), (b"caf\x8e\n", 9))
        self.tamrix("name check --bytes --text utf-8 a", status=2, named="give one of")

    @native_only
    def test_where_no_characters_are_translated_macintosh_names_are_in_the_code_page(self):
        self.make("\u8868\u30bd:", "\u00e9")  # the trail bytes are backslashes
        self.tamrix("--code-page 932 " + TO_WINDOWS, status=1, named="\u00e9: not a name in this code page")
        self.assertEqual(set(self.tree()), {"\u8868\u30bd[058]", "\u00e9"})
        twin, = self.json("name to-mac --code-page 949 \uf95c")
        self.assertEqual(twin["from"], "\uf95c", "composed it would have other bytes")

    @windows_only
    def test_pipes_have_the_code_page_and_the_disk_has_every_name(self):
        for arguments, typed in (["\u00e9"], b""), ([], b"\xe9\n"), ([], "\ufeff\u00e9\n".encode()):
            self.assertEqual(self.tamrix("name to-windows", *arguments, typed=typed), b"\xe9\n")
        self.tamrix("name to-mac --bytes \u03c0", status=2, named="not text of this code page")
        self.make("x\u03c0/a[064]", "xp/b[064]", "\u0142[064]")
        printed = self.tamrix("rename --to-mac --apply tree", status=1, named="\\u{142}[064]: not a name")
        self.assertEqual(set(printed.split(b"\n")), {b"tree\\x\\u{3C0}\\a[064] -> a@", b"tree\\xp\\b[064] -> b@", b""})
        self.assertEqual(set(self.tree()), {"x\u03c0/a@", "xp/b@", "\u0142[064]"})


class Rename(RenameTest):
    def test_apply_does_what_the_dry_run_says_and_undo_takes_it_back(self):
        before = self.make("d[064]/e[096]/f[064]", "d[064]/plain", "g[064]", "g@", "see [047", "Cafe\u0301")
        planned = self.json("rename --to-mac tree", status=1)
        self.assertEqual(self.tree(), before)
        self.assertEqual({reason: count for reason, count in planned["summary"].items() if count}, {
            "toRename": 4, "unchanged": 3, "collisions": 1, "onlyComposed": 1, "wouldNotComeBack": 1, "left": 1})
        names = [(row["from"], row["to"], row["reason"].split(":")[0]) for row in planned["entries"]]
        self.assertEqual([row for row in names if row[0] != row[1]], [
            ("f[064]", "f@", ""), ("e[096]", "e`", ""), ("Cafe\u0301", "Caf\u00e9", "only composed"),
            ("d[064]", "d@", ""), ("g[064]", "g@", "collision")])
        done = self.json("rename --to-mac --apply tree", status=1)["entries"]
        self.assertEqual(sorted((row["from"], row["to"], row["reason"].split(":")[0]) for row in done), sorted(names))
        self.assertEqual(set(self.tree()), {"d@/e`/f@", "d@/plain", "g[064]", "g@", "see [047", "Caf\u00e9"})
        self.tamrix("rename --to-mac tree", status=2, named="was renamed this way already")
        self.tamrix("rename --to-mac tree/d@", status=2, named=JOURNAL)
        self.json("rename --to-mac --force tree", status=1)
        self.undo(named="4 put back, 0 left with a reason")
        self.undo(named="0 put back, 0 left with a reason")
        self.assertEqual(self.tree(), before)
        self.json("rename --to-mac tree", status=1)

    def test_never_more_than_is_meant(self):
        before, root = self.make("a[064]"), "/" if IS_NATIVE else "C:\\"
        (self.folder / "kept").write_text("kept")
        for arguments, named in (
                (["--to-mac", ""], "DIR is empty"), (["--to-mac", root], "a whole disk"), ([], "DIR"),
                (["tree"], "give one"),
                (["--to-mac", "tree/a[064]"], "a[064]: not a folder"), (["--to-mac", "no"], "no: "),
                (["--to-mac", "--apply", "--journal", "tree/j", "tree"], "tree/j: the journal may not lie in"),
                (["--to-mac", "--apply", "--journal", "kept", "tree"], "kept: "),
                (["--undo", "tree/a[064]"], "not a journal"), (["--undo", "no", "tree"], "nothing else")):
            self.assertEqual(self.tamrix("rename", *arguments, status=2, named=named), b"")
        self.assertEqual((self.tree(), (self.folder / "kept").read_text()), (before, "kept"))

    @native_only
    def test_nothing_is_overwritten_or_confused_and_all_comes_back(self):
        raw = ["\udc80", "\udcc4", "\udc83"]  # Macintosh 80 -> Windows C4 -> 83 -> C9: each takes the name of the next
        parts = [*"Aa\u00c4\u00e4e\u0301:. \r\\\udcff\u0142", "[058]", "AUX", "con"]
        for seed in range(20):
            numbers, bytes_only = random.Random(seed), seed % 5 == 0
            pool = raw * 4 + parts if bytes_only else parts
            names = {"".join(numbers.choices(pool, k=numbers.randint(1, 3))) for _ in range(12)} - {".", ".."}
            names = {os.fsdecode(os.fsencode(name)) for name in names}
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
                self.undo()
            self.assertEqual(self.tree(), before)

    @native_only
    def test_names_that_windows_or_this_disk_does_not_keep_are_left_with_their_reason(self):
        names = {"con.txt": "device", "x" * 252 + ":": "too long", "\udcff": "Mac Roman", "Y": "in case",
                 "y": "in case", "e\u0301:": "another entry", "\u00e9:": "another entry"}
        self.make(*names, "COM0", "con-x")
        rows = {row["from"] or "\udcff": row["reason"] for row in self.json(TO_WINDOWS, status=1)["entries"]}
        self.assertEqual(rows.keys(), names.keys())
        self.assertTrue(all(reason in rows[name] for name, reason in names.items()), rows)
        self.make("a[047]b", "c[000]", "Y", "y")
        self.tamrix("rename --to-mac tree", status=1, named=["slash", "zero byte", "by the disk: 2", "unchanged: 2"])

    @native_only
    def test_links_follow_what_they_point_to(self):
        tree = f"{self.folder}/tree"
        before = self.make("d:/f:", "p", links=[
            ("a", "d:/f:"), ("b:", "./d:/../d:/"), ("c", "b:/f:"), ("d:/up", "../p"), ("e", tree + "/d:"),
            ("i", "../tree/d:"), ("o", "../out"), ("x", "gone:")])
        self.tamrix(TO_WINDOWS, named="tree/o: leads out of the folder: ../out")
        self.assertEqual(self.tree(), {
            "d[058]/f[058]": "d:/f:", "p": "p", "a": "d[058]/f[058]", "b[058]": "./d[058]/../d[058]/",
            "c": "b[058]/f[058]", "d[058]/up": "../p", "e": tree + "/d[058]", "i": "../tree/d[058]", "o": "../out",
            "x": "gone:"})
        self.undo()
        self.assertEqual(self.tree(), before)

    @native_only
    def test_killed_at_any_step_all_comes_back(self):
        line, kill, number, status = TO_WINDOWS + " --bytes", "kill -KILL $PPID", 0, -9
        while status == -9:
            number += 1
            before = self.make("d:/f:", "d:/g", "\udc80", "\udcc4", "\udc83", links=[("l", "d:/f:")])
            status = self.at_call(number, kill, line).returncode
            journal = (self.folder / JOURNAL).read_bytes()
            if journal:
                self.at_call(number % 7 + 1, kill, "rename --undo " + JOURNAL)
                self.undo(named=" 0 left with a reason, 0 left to do")
            self.assertEqual(self.tree(), before, number)
        self.assertEqual((status, number), (0, 13), "twelve writes, renames and links")
        for cut in range(journal.index(b"in\t"), journal.index(b"name\t\xc4"), 9):
            (self.folder / "torn").write_bytes(journal[:cut])  # no step is done before its whole line is there
            self.undo("torn", named="0 put back, 0 left")
            self.undo("torn")
        self.assertEqual(self.tree(), before)

    @native_only
    def test_a_disk_that_changes_is_noticed_and_an_interrupt_ends_in_order(self):
        for call, then, named in ((3, "rm tree/b:", "b: is not there"),
                                  (3, "touch 'tree/b[058]'", "b[058] is there now"),
                                  (4, "kill -TERM $PPID", "stopped: interrupted")):
            self.make("a:", "b:", "c:")
            ran = self.at_call(call, then, TO_WINDOWS)
            self.assertEqual((ran.returncode, named in ran.stderr.decode()), (1, True), ran)
            self.assertRegex(ran.stderr, rb", [12] left to do\n")
            self.undo(named=f"{call - 2} put back, 0 left")
            self.assertLessEqual({"a:", "c:"}, self.tree().keys())
        self.make("a:", "b:", "c:")
        self.tamrix(TO_WINDOWS + " --journal j")
        os.rename(self.folder / "tree/a[058]", self.folder / "tree/elsewhere")
        (self.folder / "tree/b:").write_bytes(b"new")
        self.undo("j", status=1, named=["a[058]: has changed meanwhile: it is", "b[058]: has changed meanwhile: both"])
        self.assertEqual(self.tree(), {"elsewhere": "a:", "b:": "new", "b[058]": "b:", "c:": "c:"})

    @native_only
    def test_paths_may_be_long_and_a_terminal_sees_how_far_it_is(self):
        folders = subprocess.run("mkdir tree; cd tree; for i in $(seq 200); do mkdir $(printf %030d: $i); "
                                 "cd -P $(printf %030d: $i); done", shell=True, cwd=self.folder)
        self.assertEqual(folders.returncode, 0)
        self.tamrix(TO_WINDOWS, named="200 renamed, 0 left with a reason, 0 left to do")
        terminal, end = pty.openpty()
        ran = self.at_call(4, "sleep 2.1", "rename --undo " + JOURNAL, stderr=end)
        self.assertEqual((ran.returncode, ran.stdout.count(b"\n")), (0, 200))
        self.assertRegex(os.read(terminal, 9999), rb"\r\d+ of 200")


if __name__ == "__main__":
    main()
