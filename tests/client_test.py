#!/usr/bin/env python3
"""client_test.py PROGRAM...: runs the tamrix command as its users do. PROGRAM is the native program or, for the shipped
one, "wine" and its path. Names and arguments are bytes; expectations are written from the rules, not from output."""
import json
import os
import pathlib
import re
import resource
import shlex
import subprocess
import sys
import tempfile
import unittest

TOP = pathlib.Path(__file__).resolve().parent.parent
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


class CommandLine(ClientTest):
    def test_what_is_wrong_is_named_and_nothing_is_printed(self):
        for arguments, named in (
                ([], b"command is missing"), (["frobnicate"], b"frobnicate"), (["name"], b"name"),
                (["name", "frobnicate"], b"name frobnicate"), (["name", "check", "--frob"], b"--frob"),
                (["info", "--json=1"], b"--json"), (["unc", "join"], b"NAME [SHARE]"),
                (["unc", "join", "a", "b", "odd"], b"odd"), (["unc", "join", "a", "--zone"], b"--zone"),
                (["info", "--text", "latin1"], b"latin1"), (["rename", "--to-mac", "absent"], b"absent"),
                (["rename", "."], b"--to-windows"), (["rename", ".", "--to-mac", "--to-windows"], b"--to-mac")):
            with self.subTest(arguments):
                ran = self.run_tamrix(*arguments, status=2)
                self.assertIn(named, ran.stderr)
                self.assertEqual(ran.stdout, b"")

    def commands(self):
        """The words of each command that the help lists."""
        listed = self.output("--help").decode().split("Commands:\n")[1].split("\n\n")[0]
        return [re.match(r"  ([a-z-]+(?: [a-z-]+)?) ", line)[1].split() for line in listed.split("\n")]

    def test_every_command_has_help_and_its_place_in_the_manual(self):
        manual = (TOP / "docs/tamrix.1").read_text()
        commands = self.commands()
        self.assertIn(["name", "to-windows"], commands)
        for command in commands:
            text = self.output(*command, "--help").decode()
            self.assertIn(" ".join(["usage: tamrix", *command]), text)
            self.assertRegex(manual, rf"\.Cm .*{command[-1]}\b")
            for option in re.findall(r"^  -(\S+)", text, re.M):
                self.assertRegex(manual, rf"(Fl|\|) {option}\b", command)
        self.assertRegex(self.output("--version"), rb"^tamrix \d+\.\d+\n$")

    @native_only
    def test_bash_completes_commands_and_options(self):
        def completed(*words):
            line = " ".join(shlex.quote(word) for word in (PROGRAM[0], *words))
            previous = words[-2] if len(words) > 1 else PROGRAM[0]
            script = (f"source {TOP}/share/completion/tamrix.bash; COMP_WORDS=({line}); COMP_CWORD={len(words)};"
                      f"_tamrix {PROGRAM[0]} {shlex.quote(words[-1])} {previous}; echo ${{COMPREPLY[@]}}")
            return subprocess.run(["bash", "-c", script], capture_output=True, text=True, check=True).stdout.split()

        self.assertEqual(sorted(completed("")), sorted({command[0] for command in self.commands()}))
        self.assertEqual(sorted(completed("unc", "")), ["join", "length", "split"])
        self.assertEqual(completed("extmap", "im"), ["import"])
        self.assertEqual(completed("--json", "extmap", "import", "--dry"), ["--dry-run"])
        self.assertEqual(completed("name", "--text", ""), ["utf-8"])

    @unittest.skipUnless(os.path.exists("/dev/full"), "needs a full device")
    def test_output_that_cannot_be_written_is_an_error(self):
        with open("/dev/full", "wb") as full:
            ran = subprocess.run([*PROGRAM, "info"], stdout=full, stderr=subprocess.PIPE)
        self.assertEqual(ran.returncode, 2)
        self.assertIn(b"standard output", ran.stderr)

    @native_only
    def test_input_that_cannot_be_read_is_an_error(self):
        folder = os.open(self.folder, os.O_RDONLY)
        self.addCleanup(os.close, folder)
        ran = subprocess.run([*PROGRAM, "name", "check"], stdin=folder, capture_output=True)
        self.assertEqual(ran.returncode, 2)
        self.assertIn(b"standard input", ran.stderr)

    @native_only
    def test_code_pages_and_their_limits(self):
        self.assertIn(b"12", self.complaint("--code-page", "12", "info", status=2))
        self.assertIn(b"866", self.complaint("info", "--oem-code-page=866", status=2))
        self.assertTrue(self.json("info", "--oem-code-page", "850")["characterTable"])
        japanese = self.json("info", "--code-page", "932")
        self.assertEqual((japanese["ansiCodePage"], japanese["oemCodePage"]), (932, 932))
        self.assertFalse(japanese["characterTable"])
        self.assertEqual(japanese["leadBytesHex"], bytes([*range(0x81, 0xA0), *range(0xE0, 0xFD)]).hex().upper())


class Names(ClientTest):
    def test_names_go_there_and_back(self):
        for mac, windows in ((b"Q1: Budget?", b"Q1[058] Budget[063]"), (b"Report.", b"Report[046]"),
                             (b"ab ", b"ab[032]"), (b"Icon\r", b"Icon[013]"), (b"caf\x8e", b"caf\xe9"),
                             (b"\x87", b"[135]"), (b"", b"")):
            with self.subTest(mac):
                self.assertEqual(self.output("name", "to-windows", "-0", typed=mac + b"\0"), windows + b"\0")
                self.assertEqual(self.output("name", "to-mac", "-0", typed=windows + b"\0"), mac + b"\0")

    def test_names_as_arguments_and_lines(self):
        self.assertEqual(self.output("name", "to-windows", "a/b", "--", "-c:"), b"a[047]b\n-c[058]\n")
        self.assertEqual(self.output("name", "to-windows", typed=b"a:\r\nlast"), b"a[058][013]\nlast\n")
        self.assertEqual(self.output("name", "to-mac", typed=b"a[058]\r\n\nlast"), b"a:\n\nlast\n")
        self.assertEqual(self.output("name", "to-mac", typed=b""), b"")

    def test_the_parts_of_a_path(self):
        self.assertEqual(self.output("name", "to-mac", "d\\e\\f"), b"d\0e\0f\n")
        self.assertEqual(self.output("name", "to-mac", "--separator", "::", "d\\e\\f"), b"d::e::f\n")
        self.assertEqual(self.json("name", "to-mac", "d\\e")[0]["toHex"], "640065")

    def test_text_is_mac_roman_on_one_side_and_the_code_page_on_the_other(self):
        text = "caf\u00e9 \u00df".encode()
        self.assertEqual(self.output("name", "to-windows", "--text", "utf-8", typed=text), text + b"\n")
        self.assertEqual(self.output("name", "to-mac", "--text", "utf-8", typed=text), text + b"\n")
        for way, typed, trap in (("to-windows", "\u4e00", "not in Mac Roman"),
                                 ("to-windows", "\u0142", "would fold onto l"), ("to-mac", "\u0142", "the same")):
            with self.subTest(trap):
                ran = self.run_tamrix("name", way, "--text=utf-8", typed=f"a\n{typed}\nb\n".encode(), status=1)
                self.assertEqual(ran.stdout, b"a\nb\n")
                self.assertIn(typed.encode(), ran.stderr)
        for malformed in (b"\xff", b"\xc3", b"\xc0\xaf", b"\xed\xa0\x80", b"\xf4\x90\x80\x80"):
            self.run_tamrix("name", "to-windows", "--text", "utf-8", typed=malformed, status=1)

    def test_a_zero_byte_inside_a_line_is_refused(self):
        ran = self.run_tamrix("name", "to-windows", typed=b"a\0b\nc\n", status=1)
        self.assertEqual(ran.stdout, b"c\n")

    def test_check_says_what_is_quoted_and_why(self):
        name, = self.json("name", "check", typed=b"@a\r\x87?b.")
        self.assertEqual([(each["position"], each["byte"]) for each in name["quoted"]],
                         [(0, 0x40), (2, 13), (3, 0x87), (4, 0x3F), (6, 0x2E)])
        self.assertEqual(len({each["reason"] for each in name["quoted"]}), 5)
        self.assertTrue(name["comesBack"])

    def test_check_finds_what_does_not_come_back_or_fit(self):
        look, = self.json("name", "check", "x[058]", status=1)
        self.assertEqual(look["looksQuoted"], [{"position": 1, "value": 58}])
        self.assertFalse(look["comesBack"])
        for harmless in ("x[048]", "x[999]", "x[58]", "x[0:8]", "x[058"):
            report, = self.json("name", "check", harmless)
            self.assertEqual((report["looksQuoted"], report["comesBack"]), ([], True), harmless)
        fits, not_fits = self.json("name", "check", "a" * 250 + ":", "a" * 251 + ":", status=1)
        self.assertEqual((fits["tooLong"], not_fits["tooLong"]), (False, True))

    def test_json_keeps_every_byte(self):
        every = bytes(byte for byte in range(1, 256) if byte != 10)
        for name in self.json("name", "to-windows", typed=every):
            self.assertEqual(name["from"].encode("latin-1"), every)
            self.assertEqual(bytes.fromhex(name["fromHex"]), every)
            self.assertEqual(bytes.fromhex(name["toHex"]), name["to"].encode("latin-1"))

    @native_only
    def test_settings_of_the_registry_file_apply(self):
        settings = self.folder / "settings.reg"
        key = b"REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Quillon Systems, Inc.\\File Client]\r\n"
        settings.write_bytes(key + b'"QuoteChars"="#["\r\n')
        name, = self.json("name", "check", "--registry", settings, "x[035]")  # a quoted bracket is never misread
        self.assertEqual((name["windows"], name["looksQuoted"], name["comesBack"]), ("x[091]035]", [], True))
        settings.write_bytes(key + b'"QuoteChars"="#%"\r\n"QuoteBracketChars"="{}"\r\n')
        self.assertEqual(self.output("name", "to-windows", "--registry", settings, "a#b:"), b"a{035}b:\n")
        info = self.json("info", "--registry", settings)
        self.assertEqual((info["quoteSetHex"], info["open"], info["close"]), ("002325", "{", "}"))
        settings.write_bytes(b"REGEDIT4\r\n\r\n[HKEY_NOWHERE\\x]\r\n")
        self.assertIn(b"settings.reg:3", self.complaint("info", "--registry", settings, status=2))

    @native_only
    def test_trail_bytes_are_never_taken_for_characters(self):
        tricky = "\u8868".encode("cp932")  # its trail byte is a backslash
        self.assertEqual(self.output("--code-page", "932", "name", "to-windows", typed=tricky), tricky + b"\n")
        self.assertEqual(self.output("--code-page", "932", "name", "to-mac", typed=tricky), tricky + b"\n")


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


class Paths(ClientTest):
    def test_join_and_length(self):
        self.assertEqual(self.output("unc", "join", "--zone", "Sales", "Mercury", "Projects"),
                         b"\\\\Sales@Mercury\\Projects\n")
        self.assertEqual(self.output("unc", "join", "--zone", "*", "Mercury"), b"\\\\Mercury\n")
        self.assertEqual(self.output("unc", "join", "--printer", "Laser", "Queue"), b"\\\\`Laser\\Queue\n")
        self.assertEqual(self.output("unc", "length", "--zone", "*", "Mercury", "Projects"), b"19\n")
        self.assertIn(b"Laser", self.complaint("unc", "join", "--printer", "Laser", status=1))
        self.run_tamrix("unc", "join", "a" * 32767, status=1)

    def test_split(self):
        server, printer, neither = self.json("unc", "split", "\\\\Sales@Mercury\\Projects\\Docs\\a.txt",
                                             "\\\\`Laser\\Queue", "c:\\x", status=1)
        parts = ("kind", "zone", "name", "share", "rest")
        self.assertEqual([server[part] for part in parts], ["server", "Sales", "Mercury", "Projects", "Docs\\a.txt"])
        self.assertEqual([printer[part] for part in parts], ["printer", "*", "Laser", "Queue", ""])
        self.assertEqual(neither["kind"], "none")
        self.assertIn(b"share\tProjects\n", self.output("unc", "split", "\\\\Mercury\\Projects"))


class Mappings(ClientTest):
    """Extensions begin with .tamrix; on Windows the registry is the prefix's own and is left as it was."""

    def setUp(self):
        super().setUp()
        if not IS_NATIVE:
            self.addCleanup(self.forget)
            self.before = self.store()

    def forget(self):
        for extension in (".tamrixa", ".tamrixb", ".tamrixc"):
            subprocess.run([*PROGRAM, "extmap", "remove", extension], stderr=subprocess.DEVNULL)
        self.assertEqual(self.store(), self.before)

    def store(self):
        return {each["extension"]: (each["type"], each["creator"], each["comment"]) for each in
                self.json("extmap", "list")}

    def test_a_mapping_lives_from_run_to_run(self):
        self.run_tamrix("extmap", "set", "tamrixa", "TEXT", "ttxt", "Plain text")
        self.run_tamrix("extmap", "set", ".tamrixb", "BnHq", "SIT ")
        self.assertEqual(self.output("extmap", "get", ".TAMRIXA"), b".TAMRIXA\tTEXT\tttxt\tPlain text\n")
        self.assertEqual(self.store()[".tamrixb"], ("BnHq", "SIT ", ""))
        self.assertEqual(self.output("extmap", "list", "--type", "BnHq", "--creator", "SIT "),
                         b".tamrixb\tBnHq\tSIT \n")
        self.run_tamrix("extmap", "set", "tamrixa", "TEXT", "MOSS")
        self.assertEqual(self.store()[".tamrixa"], ("TEXT", "MOSS", "Plain text"))
        self.run_tamrix("extmap", "set", "tamrixa", "TEXT", "MOSS", "")
        self.assertEqual(self.store()[".tamrixa"], ("TEXT", "MOSS", ""))
        self.assertIn(b"tamrixc", self.complaint("extmap", "remove", "tamrixa", "tamrixc", status=1))
        self.assertNotIn(".tamrixa", self.store())
        self.assertIn(b"tamrixa", self.complaint("extmap", "get", "tamrixa", status=1))

    def test_what_is_no_mapping_is_named_and_not_written(self):
        before = self.store()
        for arguments, named in ((["set", "tamrixa", "TXT", "ttxt"], b"TXT"),
                                 (["set", "tamrixa", "TEXT", "ttxt5"], b"ttxt5"),
                                 (["set", ".", "TEXT", "ttxt"], b"."), (["set", "a\\b", "TEXT", "ttxt"], b"a\\b"),
                                 (["set", "tamrixa890123456", "TEXT", "ttxt"], b"tamrixa890123456"),
                                 (["list", "--type", "abc"], b"abc"), (["remove", "tamrixa", ""], b"extension")):
            with self.subTest(arguments):
                self.assertIn(named, self.complaint("extmap", *arguments, status=2))
        self.assertEqual(self.store(), before)

    def test_a_file_goes_in_whole_or_not_at_all(self):
        self.run_tamrix("extmap", "set", "tamrixa", "TEXT", "ttxt", "old")
        before = self.store()
        file = self.folder / "map.txt"
        good = b"# new\n.tamrixa\tTEXT\tttxt\ntamrixb\t\"BnH \"\t\"\\xA5\\xA5\\xA5\\xA5\"\r\n"
        file.write_bytes(good + b".tamrixc\tTEXT\tfive5\n")
        self.assertIn(b"map.txt:4", self.complaint("extmap", "import", "map.txt", status=2))
        self.assertIn(b"absent.txt", self.complaint("extmap", "import", "absent.txt", status=2))
        endless = self.run_tamrix("extmap", "import", "-", typed=b"\n" * (17 << 20), status=2)
        self.assertIn(b"-: the file is larger", endless.stderr)
        self.assertEqual(self.store(), before)
        file.write_bytes(good)
        planned = self.output("extmap", "import", "--dry-run", "map.txt")
        self.assertEqual([line.split()[:2] for line in planned.splitlines()],
                         [[b"change", b".tamrixa"], [b"add", b".tamrixb"]])
        self.assertEqual(self.store(), before)
        self.assertEqual(self.output("extmap", "import", "map.txt"), planned)
        self.assertEqual(self.store(), {**before, ".tamrixa": ("TEXT", "ttxt", ""),
                                        ".tamrixb": ("BnH ", "\xa5" * 4, "")})
        self.assertEqual(self.output("extmap", "import", "-", typed=good), b"")

    def test_what_is_exported_comes_back(self):
        self.run_tamrix("extmap", "set", "tamrixa", "TEXT", "a\tb ", 'a "comment" with \\ and a tab\t')
        self.run_tamrix("extmap", "export", "map.txt")
        before = self.store()
        self.assertEqual((self.folder / "map.txt").read_bytes(), self.output("extmap", "export"))
        self.run_tamrix("extmap", "remove", "tamrixa")
        self.run_tamrix("extmap", "import", "map.txt")
        self.assertEqual(self.store(), before)

    def export_over(self, target, status=0, **keywords):
        before = sorted(os.listdir(self.folder))
        ran = self.run_tamrix("extmap", "export", target, status=status, **keywords)
        self.assertEqual(target.encode() in ran.stderr, status != 0)
        self.assertEqual(sorted(os.listdir(self.folder)), before)

    def test_an_export_that_fails_leaves_what_was_there(self):
        self.run_tamrix("extmap", "set", "tamrixa", "TEXT", "ttxt", "longer than the disk has room for")
        former, link = self.folder / "map.txt", self.folder / "link.txt"
        former.write_bytes(b"former\n")
        os.symlink("map.txt", link)
        os.mkdir(self.folder / "folder")
        for target, full_disk in (("map.txt", True), ("link.txt", True), ("new.txt", True), ("absent/map.txt", False),
                                  ("folder", False)):
            with self.subTest(target):
                self.export_over(target, status=2, full_disk=full_disk)
        if os.geteuid() != 0:  # whom no file is protected from
            former.chmod(0o444)
            self.export_over("map.txt", status=2)
            former.chmod(0o644)
        self.assertEqual(former.read_bytes(), b"former\n")
        self.export_over("link.txt")
        self.assertTrue(link.is_symlink())
        self.assertEqual(former.read_bytes(), self.output("extmap", "export"))

    @native_only
    def test_an_export_goes_into_devices_and_pipes_and_to_where_a_link_points(self):
        self.run_tamrix("extmap", "set", "tamrixa", "TEXT", "ttxt")
        os.mkfifo(self.folder / "pipe")
        reader = subprocess.Popen(["cat", self.folder / "pipe"], stdout=subprocess.PIPE)
        self.run_tamrix("extmap", "export", "pipe")
        self.assertEqual(reader.communicate(timeout=60)[0], b".tamrixa\tTEXT\tttxt\n")
        os.symlink("data/new.txt", self.folder / "dangling")
        self.run_tamrix("extmap", "export", "dangling")
        self.assertEqual((self.folder / "data" / "new.txt").read_bytes(), b".tamrixa\tTEXT\tttxt\n")
        self.export_over("/dev/full", status=2)

    def test_the_default_codes(self):
        self.assertEqual(self.output("extmap", "default"), b"TEXT\tdosa\n")
        self.assertEqual(self.json("extmap", "default")["creatorHex"], b"dosa".hex().upper())

    def test_codes_are_mac_roman_and_comments_in_the_code_page(self):
        self.run_tamrix("--text=utf-8", "extmap", "set", "tamrixa", "TEXT", "\u00fcbe\u2022", "gr\u00fcn \u2022")
        mapping = self.json("extmap", "get", "tamrixa")
        self.assertEqual((mapping["creatorHex"], mapping["commentHex"]), ("9F6265A5", "6772FC6E2095"))
        self.assertEqual(self.json("extmap", "get", "--text", "utf-8", "tamrixa")["creator"], "\u00fcbe\u2022")

    @native_only
    def test_the_starter_set_goes_in(self):
        starter = TOP / "share/starter-mappings.txt"
        lines = [line for line in starter.read_bytes().splitlines() if line and not line.startswith(b"#")]
        self.run_tamrix("extmap", "import", starter)
        self.assertEqual(len(self.store()), len(lines))

    @native_only
    def test_whatever_is_exported_can_be_imported(self):
        keys = ("REGEDIT4", "", *(f'[HKEY_CLASSES_ROOT\\{name}]\n"Mac Type"="TEXT"\n"Mac Creator"="{creator}"' for
                                  name, creator in ((".", "ttxt"), (".#", "ttxt"), (". x", "abc"), (".y", "abcde"))))
        (self.folder / "odd.reg").write_text("\n".join(keys))
        exported = self.output("extmap", "export", "--registry", "odd.reg")
        self.assertIn(b".#", exported)
        self.assertEqual(self.output("extmap", "import", "-", typed=exported).count(b"add"), exported.count(b"\n"))

    @native_only
    def test_runs_at_once_lose_nothing(self):
        environment = dict(os.environ, XDG_DATA_HOME=str(self.folder / "data"))
        runs = [subprocess.Popen([*PROGRAM, "extmap", "set", f"t{number}", "TEXT", "ttxt"], env=environment)
                for number in range(12)]
        self.assertEqual([run.wait() for run in runs], [0] * 12)
        self.assertEqual(len(self.store()), 12)

    @native_only
    def test_a_registry_file_that_is_none(self):
        os.mkfifo(self.folder / "pipe")
        for path in ("/dev/null", ".", "/dev/full", "pipe"):  # the last two would be read for ever
            self.assertIn(b"not a regular file", self.complaint("--registry", path, "info", status=2))

    @native_only
    def test_a_registry_file_that_cannot_be_saved(self):
        (self.folder / "file").touch()
        complaint = self.complaint("--registry", "file/x.reg", "extmap", "set", "a", "TEXT", "ttxt", status=2)
        self.assertIn(b"file/x.reg", complaint)


class Dialogs(ClientTest):
    OK, CANCEL = 1, 2

    @native_only
    def test_natively_they_say_what_they_need(self):
        for arguments in (["edit", "ttxt", "TEXT"], ["browse"], ["dialog", "x.dll", "1"], ["about", "--modeless"]):
            self.assertIn(b"needs Windows", self.complaint(*arguments, status=2))
        self.assertIn(b"TXT", self.complaint("edit", "ttxt", "TXT", status=2))
        self.assertIn(b"--title", self.complaint("browse", "--title", "x" * 64, status=2))
        self.assertIn(b"--folder", self.complaint("browse", "--open", "--folder", status=2))

    def pressing(self, title, button, *arguments, status):
        """Runs the command, and presses the button in the dialog with this title."""
        press = subprocess.Popen(["wine", os.environ["TAMRIX_PRESS_BUTTON"], title, str(button)])
        ran = self.run_tamrix(*arguments, status=status)
        self.assertEqual(press.wait(), 0, title)
        return ran.stdout

    @unittest.skipUnless("TAMRIX_PRESS_BUTTON" in os.environ, "nothing to press buttons with")
    def test_what_is_chosen_is_printed(self):
        windows = "C:\\windows"
        chosen = self.pressing("Pick it", self.OK, "browse", "--folder", "--title", "Pick it", windows, status=0)
        self.assertEqual(chosen.lower(), b"c:\\windows\n")
        chosen = self.pressing("Keep it", self.OK, "browse", "--save", "--title=Keep it", "--filter", "Any|*.*",
                               "--json", windows + "\\new.txt", status=0)
        self.assertEqual(json.loads(chosen)["path"].lower(), "c:\\windows\\new.txt")
        self.assertEqual(self.pressing("None", self.CANCEL, "browse", "--title", "None", windows, status=1), b"")

    @unittest.skipUnless("TAMRIX_PRESS_BUTTON" in os.environ, "nothing to press buttons with")
    def test_dialogs_show_and_end(self):
        library = os.path.join(os.path.dirname(PROGRAM[-1]), "Tamrix32.dll")
        for adjust in ([], ["--adjust"]):
            self.pressing("Add Filename Extension Mapping", self.OK, "dialog", *adjust, library, "411", status=0)
        self.assertIn(b"999", self.complaint("dialog", library, "999", status=1))
        self.assertIn(b"absent.dll", self.complaint("dialog", "absent.dll", "1", status=2))
        self.pressing("Edit File Extension Mapping", self.CANCEL, "edit", "ttxt", "TEXT", status=0)


class Info(ClientTest):
    def test_western_defaults(self):
        info = self.json("info")
        self.assertEqual((info["ansiCodePage"], info["oemCodePage"], info["characterTable"]), (1252, 437, True))
        self.assertEqual((info["open"], info["close"], len(info["quoteSetHex"])), ("[", "]", 2 * 74))
        self.assertGreaterEqual(info["processes"], 1)
        self.assertIn(b"[ ]", self.output("info"))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
