# Mappings: what is set, listed, removed, exported and imported, whole or not at all. On Windows the registry is the
# prefix's own, and each test leaves it as it was.
import os
import stat
import subprocess

from harness import IS_NATIVE, PROGRAM, TOP, CommandTest, main, native_only, windows_only


class Mappings(CommandTest):
    def setUp(self):
        super().setUp()
        if not IS_NATIVE:
            before = self.store()
            self.addCleanup(lambda: self.assertEqual(self.store(), before))
            self.addCleanup(subprocess.run, [*PROGRAM, "extmap", "remove", "ta", "tb", "tc"], capture_output=True)

    def store(self):
        return {row["extension"]: (row["type"], row["creator"], row["comment"]) for row in self.json("extmap list")}

    def given(self, *mappings):
        for mapping in mappings:
            self.tamrix("extmap set " + mapping)
        return self.store()

    @native_only
    def test_a_mapping_lives_until_it_is_removed(self):
        before = self.given(".ta TEXT ttxt Plain", "a23456789012345 BnHq 'SIT '")
        self.rows([("extmap get .TA", ".TA\tTEXT\tttxt\tPlain\n"), ("extmap list --type BnHq --creator ttxt", ""),
                   ("extmap set ta TEXT MOSS", ""), ("extmap get ta", ".ta\tTEXT\tMOSS\tPlain\n"),
                   ("extmap set ta TEXT ttxt ''", ""), ("extmap get ta", ".ta\tTEXT\tttxt\n"),
                   ("extmap set tb TXT ttxt", 2, "TXT: a code has 4 bytes"), ("extmap set tb TEXT five5", 2, "five5"),
                   ("extmap set . TEXT ttxt", 2, "not an extension"), (r"extmap set 'a\b' TEXT ttxt", 2, r"a\b"),
                   ("extmap set a234567890123456 TEXT ttxt", 2, "at most 15 bytes"),
                   ("extmap list --type abc", 2, "abc"), ("extmap list --creator abc", 2, "abc"),
                   ("extmap get ''", 2, "not an extension"), ("extmap remove ta ''", 2, "not an extension")])
        self.assertEqual(self.store(), {**before, ".ta": ("TEXT", "ttxt", "")})
        self.assertEqual((self.json("extmap get ta")["typeHex"], self.json("extmap default")["creatorHex"]),
                         (b"TEXT".hex().upper(), b"dosa".hex().upper()))

    def test_codes_are_mac_roman_and_comments_in_the_code_page(self):
        self.tamrix("extmap set --text utf-8 ta TEXT übe• 'grün •'")
        self.assertEqual([self.json("extmap get ta")[part + "Hex"] for part in ("creator", "comment")],
                         ["9F6265A5", "6772FC6E2095"])
        self.assertEqual(self.json("extmap get --text utf-8 ta")["creator"], "übe•")

    def test_a_file_goes_in_whole_or_not_at_all(self):
        before = self.given("ta TEXT ttxt old")
        good = b".tb\tTEXT\tttxt\n"
        for text, named in ((b".a\tTEXT\n", "2: an extension, a type and a creator are needed"),
                            (b"\n\n.a\tTEXT\tfive5", "4: the creator has 5"), (b"\tTEXT\tttxt", "extension is empty"),
                            (b".a234567890123456\tTEXT\tttxt", "than 15 bytes"), (b"a\\b\tTEXT\tttxt", "backslash"),
                            (b".a\tTEXT\tttxt\tc\t", "more than four"), (b".a\tTEXT\t\"ttxt\"d", "closing quote"),
                            (b".a\tTEXT\t\"ttxt\n", "never closed"), (b".a\tTEXT\t\"\\q\"", "an escape"),
                            (b".a\tTEXT\tttxt\tc\0", "a zero byte"), (b".a\tTEXT\tttxt\nTB\tTEXT\tttxt", "in line 1"),
                            (b"\n" * (17 << 20), "-: the file is larger")) if IS_NATIVE else ():
            self.tamrix("extmap import -", typed=good + text, status=2, named=named)
        self.tamrix("extmap import absent.txt", status=2, named="absent.txt: the file cannot be read")
        (self.folder / "map.txt").write_bytes(b"# new\n.ta\tTEXT\tttxt\ntb\t\"BnH \"\t\"\\xA5\\xA5\\xA5\\xA5\"\r\n")
        planned = self.tamrix("extmap import --dry-run --text utf-8 map.txt")
        self.assertEqual(planned, "change\t.ta\tTEXT\tttxt\nadd\t.tb\tBnH \t••••\n".encode())
        if IS_NATIVE:  # where the registry is a file, which may not fit on the disk
            self.tamrix("extmap import map.txt", full_disk=True, status=2, named="nothing has changed")
        self.assertEqual(self.store(), before)
        self.assertEqual([each["change"] for each in self.json("extmap import map.txt")], ["change", "add"])
        after = self.store()
        self.assertEqual(after, {**before, ".ta": ("TEXT", "ttxt", ""), ".tb": ("BnH ", "••••", "")})
        self.assertEqual(self.tamrix("extmap import map.txt"), b"", "nothing is left to change")
        exported = self.tamrix("extmap export -")
        self.tamrix("extmap remove ta tb")
        self.tamrix("extmap import -", typed=exported)
        self.assertEqual(self.store(), after)

    @native_only
    def test_whatever_is_stored_can_be_exported_and_imported(self):
        starter = [line for line in (TOP / "share/starter-mappings.txt").read_text().split("\n") if line[:1] == "."]
        self.tamrix("extmap import", TOP / "share/starter-mappings.txt")
        self.assertEqual(self.tamrix("extmap export").decode().splitlines(), sorted(starter))
        keys = "".join(f'[HKEY_CLASSES_ROOT\\{name}]\n"Mac Type"="TEXT"\n"Mac Creator"="{creator}"\n' for
                       name, creator in ((".", "ttxt"), (".#", "ttxt"), (". x", "abc"), (".y", "abcde")))
        (self.folder / "odd.reg").write_text("REGEDIT4\n\n" + keys)
        exported = self.tamrix("extmap export --registry odd.reg")
        self.assertIn(b".#", exported)
        self.assertEqual(self.tamrix("extmap import -", typed=exported).count(b"add"), exported.count(b"\n"))

    def test_an_export_that_fails_leaves_what_was_there(self):
        self.given("ta TEXT ttxt 'longer than the disk has room for'")
        former = self.folder / "map.txt"
        former.write_bytes(b"former\n")
        former.chmod(0o640)
        os.symlink("map.txt", self.folder / "link.txt")
        os.mkdir(self.folder / "folder")
        before = sorted(os.listdir(self.folder))
        for target, full_disk in (("map.txt", True), ("link.txt", True), ("new.txt", True), ("absent/map.txt", False),
                                  ("folder", False)):
            self.tamrix("extmap export", target, status=2, named=target + ": cannot write", full_disk=full_disk)
            self.assertEqual((sorted(os.listdir(self.folder)), former.read_bytes()), (before, b"former\n"))
        self.tamrix("extmap export link.txt")
        self.assertEqual((sorted(os.listdir(self.folder)), former.read_bytes()), (before, self.tamrix("extmap export")))
        self.assertTrue((self.folder / "link.txt").is_symlink())
        self.assertTrue(not IS_NATIVE or stat.S_IMODE(former.stat().st_mode) == 0o640)

    @native_only
    def test_an_export_goes_into_devices_and_pipes_and_to_where_a_link_points(self):
        self.given("ta TEXT ttxt")
        os.mkfifo(self.folder / "pipe")
        with subprocess.Popen(["cat", self.folder / "pipe"], stdout=subprocess.PIPE) as reader:
            self.tamrix("extmap export pipe")
            self.assertEqual(reader.stdout.read(), b".ta\tTEXT\tttxt\n")
        os.symlink("data/new.txt", self.folder / "dangling")
        self.tamrix("extmap export dangling")
        self.assertEqual((self.folder / "data/new.txt").read_bytes(), b".ta\tTEXT\tttxt\n")
        self.tamrix("extmap export /dev/full", status=2, named="/dev/full: cannot write")

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

    @windows_only
    def test_a_refused_import_leaves_every_byte(self):
        def registry(*words):
            subprocess.run([PROGRAM[0], "reg", *words], cwd=self.folder, check=True, stdout=subprocess.DEVNULL)

        text = '[HKEY_CLASSES_ROOT\\.ta]\n"Mac Type"="\u65e5\u672c"\n"Mac Comment"=dword:7\n"Mac Creator"=hex(2):41,0'
        file = self.folder / "odd.reg"
        file.write_text("Windows Registry Editor Version 5.00\n\n" + text + "\n", encoding="utf-16")
        registry("import", "odd.reg")
        registry("export", r"HKCR\.ta", "before.reg")
        # The library reads no comment of this length back.
        lines = b".ta\tTEXT\tttxt\tnew\n.tb\tTEXT\tttxt\n.tc\tTEXT\tttxt\t" + b"x" * 40000
        self.tamrix("extmap import -", typed=lines, status=2, named=".tc: the registry refuses the mapping; nothing")
        registry("export", r"HKCR\.ta", "after.reg")
        registry("delete", r"HKCR\.ta", "/f")
        before, after = ((self.folder / name).read_bytes() for name in ("before.reg", "after.reg"))
        self.assertIn("\u65e5\u672c".encode("utf-16-le"), before)
        self.assertEqual(after, before)

    @native_only
    def test_the_registry_file(self):
        os.mkfifo(self.folder / "pipe")
        (self.folder / "file").touch()
        (self.folder / "odd.reg").write_bytes(b"REGEDIT4\r\n\r\n[HKEY_NOWHERE\\x]\r\n")
        self.rows([*((f"--registry {path} info", 2, "not a regular file") for path in ("/dev/full", ".", "pipe")),
                   ("--registry file/x.reg extmap set a TEXT ttxt", 2, "file/x.reg"),
                   ("info --registry odd.reg", 2, "odd.reg:3")])


if __name__ == "__main__":
    main()
