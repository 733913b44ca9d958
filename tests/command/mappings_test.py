# Mappings: what is set, listed, removed, exported and imported, whole or not at all. On Windows the registry is the
# prefix's own, and each test leaves it as it was.
import os
import re
import subprocess

from harness import FULL_DISK, IS_NATIVE, PROGRAM, TOP, CommandTest, main, native_only, on_windows_95, windows_only, windows_registry


class Mappings(CommandTest):
    def setUp(self):
        super().setUp()
        if not IS_NATIVE:
            before = self.store()
            self.addCleanup(lambda: self.assertEqual(self.store(), before))
            self.addCleanup(subprocess.run, [*PROGRAM, "extmap", "remove", "ta", "tb", "tc"], capture_output=True)

    def store(self):
        return {row["extension"]: (row["type"], row["creator"], row["comment"]) for row in self.json("extmap list")}

    @native_only
    def test_each_line_does_what_it_says_or_names_what_is_wrong(self):
        (self.folder / "big").write_bytes(b"\n" * (17 << 20))
        os.symlink("data/new.txt", self.folder / "dangling")
        mappings, most = ".TA\tTEXT\tttxt\n.a23456789012345\tBnHq\tSIT \n", "x" * 32767
        quoted = mappings.replace("SIT ", '"SIT "')
        self.rows([("extmap set .TA TEXT ttxt " + most, ""), ("extmap set a23456789012345 BnHq 'SIT '", ""),
                   ("extmap get .TA", f".TA\tTEXT\tttxt\t{most}\n"), ("extmap list --type BnHq --creator ttxt", ""),
                   ("extmap set ta TEXT MOSS", ""), ("extmap get ta", f".ta\tTEXT\tMOSS\t{most}\n"),
                   ("extmap set ta TEXT ttxt x" + most, 2, "cannot store the mapping; nothing has changed"),
                   ("extmap set ta TEXT ttxt ''", ""), ("extmap get ta", ".ta\tTEXT\tttxt\n"),
                   ("extmap set tb TXT ttxt", 2, "TXT: a code must have 4"), ("extmap set tb TEXT five5", 2, "five5"),
                   ("extmap set . TEXT ttxt", 2, "not an extension"), (r"extmap set 'a\b' TEXT ttxt", 2, r"a\b"),
                   ("extmap set a234567890123456 TEXT ttxt", 2, "than 15 bytes"),
                   ("extmap list --type abc", 2, "abc"), ("extmap list --creator abc", 2, "abc"),
                   ("extmap get ''", 2, "not an extension"), ("extmap remove ta ''", 2, "not an extension"),
                   ("extmap import - <<< '\n\n.a\tTEXT\tfive5'", 2, "-:3: the creator must"),
                   ("extmap import big", 2, "big: the file is larger"), ("extmap import no", 2, "no: cannot read the file: N"),
                   ("extmap list", mappings), ("extmap export /dev/stdout", quoted), ("extmap export dangling", ""),
                   ("extmap export /dev/full", 2, "/dev/full: cannot write"),
                   ("extmap remove no ta a23456789012345", 1, "no: no mapping"), ("extmap list", "")])
        self.assertEqual((self.folder / "data/new.txt").read_text(), quoted)

    def test_a_file_goes_in_whole_or_not_at_all(self):
        self.tamrix("extmap set --text utf-8 ta TEXT übe• 'grün •'")
        before = self.store()
        self.assertEqual(before[".ta"], ("TEXT", "übe•", "grün •"))
        self.assertIn('.ta\tTEXT\t"\\x9Fbe\\xA5"\t"gr\\xFCn \\x95"\n', self.tamrix("extmap export -"))
        (self.folder / "map.txt").write_text('# new\n.ta\tTEXT\tttxt\ntb\t"BnH "\t"\\xA5\\xA5\\xA5\\xA5"\r\n')
        self.rows([("extmap import --dry-run --text utf-8 map.txt", "change\t.ta\tTEXT\tttxt\nadd\t.tb\tBnH \t••••\n")])
        self.assertEqual(self.store(), before)
        self.assertEqual([each["change"] for each in self.json("extmap import map.txt")], ["change", "add"])
        after = self.store()
        self.assertEqual(after, {**before, ".ta": ("TEXT", "ttxt", ""), ".tb": ("BnH ", "••••", "")})
        self.rows([("extmap import map.txt", "")])  # nothing is left to change
        exported = self.tamrix("extmap export -")
        self.tamrix("extmap remove ta tb")
        self.tamrix(f"extmap import - <<< '{exported}'")
        self.assertEqual(self.store(), after)

    @native_only
    def test_whatever_is_stored_can_be_exported_and_imported(self):
        starter = TOP / "share/starter-mappings.txt"
        self.tamrix("extmap import", starter)
        self.rows([("extmap export", "".join(sorted(line for line in starter.read_text().splitlines(True) if line[0] == ".")))])
        keys = "".join(f'[HKEY_CLASSES_ROOT\\{name}]\n"Mac Type"="TEXT"\n"Mac Creator"="{creator}"\n' for
                       name, creator in ((".", "ttxt"), (".#", "ttxt"), (". x", "abc"), (".y", "abcde")))
        (self.folder / "odd.reg").write_text("REGEDIT4\n\n" + keys)
        exported = self.tamrix("extmap export --registry odd.reg")
        self.assertIn(".#", exported)
        self.assertEqual(self.tamrix(f"extmap import - <<< '{exported}'").count("add"), exported.count("\n"))

    def test_an_export_replaces_a_file_whole_or_leaves_it(self):
        self.tamrix("extmap set ta TEXT ttxt 'longer than the disk has room for'")
        former = self.folder / "map.txt"
        former.write_bytes(b"former\n")
        former.chmod(0o640)
        os.symlink("map.txt", self.folder / "link.txt")
        os.mkdir(self.folder / "folder")
        before = sorted(os.listdir(self.folder))
        for target, limit in (("map.txt", FULL_DISK), ("link.txt", FULL_DISK), ("new.txt", FULL_DISK),
                              ("absent/map.txt", None), ("folder", None)):
            self.tamrix("extmap export", target, status=2, named=target + ": cannot write", limit=limit)
            self.assertEqual((sorted(os.listdir(self.folder)), former.read_text()), (before, "former\n"))
        self.tamrix("extmap export link.txt")
        self.assertEqual((sorted(os.listdir(self.folder)), former.read_text()), (before, self.tamrix("extmap export")))
        self.assertTrue((self.folder / "link.txt").is_symlink() and (former.stat().st_mode & 0o777 == 0o640 or not IS_NATIVE))

    @windows_only
    def test_a_replaced_file_stays_hidden_and_is_never_missing_or_named(self):
        # Windows 95 has no call that replaces a file in one move. Where map.txt is missing, be it for a moment, MAP.TXT
        # is found for it, and is in the way.
        for name in ("map.txt", "MAP.TXT"):
            (self.folder / name).write_text(name)
        subprocess.run([PROGRAM[0], "attrib", "+h", "map.txt"], cwd=self.folder, check=True)
        is_old, kept = isinstance(self, OnOldWindows), os.listxattr(self.folder / "map.txt")  # Wine's mark
        said = self.tamrix("extmap export map.txt", status=(2 * is_old,), stderr=subprocess.STDOUT)
        file = re.search(r"; its former content is now in .*\\(.*)\n", said)[1] if is_old else "map.txt"
        texts = {path.name: path.read_text() for path in self.folder.iterdir()}
        wanted = {"MAP.TXT": "MAP.TXT", file: "map.txt" if is_old else self.tamrix("extmap export")}
        self.assertEqual((texts, os.listxattr(self.folder / file)), (wanted, kept))

    def test_runs_that_change_mappings_wait_for_each_other(self):
        # An import that is still reading its input has read the registry; a run that did not wait would be undone.
        importing = subprocess.Popen([*PROGRAM, "extmap", "import", "-"], stdin=subprocess.PIPE, env=self.environment,
                                     stdout=subprocess.DEVNULL)
        with self.assertRaises(subprocess.TimeoutExpired):
            for _ in range(50):
                setting = subprocess.Popen([*PROGRAM, "extmap", "set", "ta", "TEXT", "ttxt"], env=self.environment)
                setting.wait(1)
        importing.communicate(b".tb\tTEXT\tttxt\n")
        self.assertEqual((importing.wait(), setting.wait()), (0, 0))
        self.assertLessEqual({".ta", ".tb"}, set(self.store()))

    @native_only
    def test_a_save_that_is_cut_leaves_the_former_registry(self):
        line, file = "extmap set tb TEXT ttxt --registry r.reg", self.folder / "r.reg"
        self.tamrix("extmap set ta TEXT ttxt --registry r.reg")
        former = file.read_bytes()
        self.tamrix(line, status=2, named="r.reg: cannot write", limit=FULL_DISK)
        for call in (1, 2, 3, 4):  # the new file is written, flushed and renamed, and last its folder flushed
            self.assertEqual(file.read_bytes(), former)
            self.tamrix(line, at_call=call, then="kill -KILL $PPID", status=-9, named=None)
        self.assertIn(b"[HKEY_CLASSES_ROOT\\.tb]", file.read_bytes())

    @windows_only
    def test_a_refused_import_leaves_every_byte(self):
        text = '[HKEY_CLASSES_ROOT\\.ta]\n"Mac Type"="\u65e5\u672c"\n"Mac Comment"=dword:7\n"Mac Creator"=hex(2):41,0'
        (self.folder / "odd.reg").write_text("Windows Registry Editor Version 5.00\n\n" + text, encoding="utf-16")
        windows_registry("import odd.reg", self.folder)
        windows_registry(r"export HKCR\.ta before.reg", self.folder)
        # The library reads no comment of this length back.
        lines = ".ta\tTEXT\tttxt\tnew\n.tb\tTEXT\tttxt\n.tc\tTEXT\tttxt\t" + "x" * 40000
        self.tamrix(f"extmap import - <<< '{lines}'", status=2, named=".tc: cannot store the mapping; nothing")
        windows_registry(r"export HKCR\.ta after.reg", self.folder)
        windows_registry(r"delete HKCR\.ta /f")
        before, after = ((self.folder / name).read_bytes() for name in ("before.reg", "after.reg"))
        self.assertIn("\u65e5\u672c".encode("utf-16-le"), before)
        self.assertEqual(after, before)


@on_windows_95
class OnOldWindows(Mappings):
    test_a_refused_import_leaves_every_byte = None  # it holds what that registry can't


if __name__ == "__main__":
    main()
