# One pass over the command: what each line prints, and which part of a line is at fault.
import json
import os
import re
import shlex
import subprocess
import unittest

from harness import IS_NATIVE, PROGRAM, TOP, CommandTest, main, native_only, windows_only


class Guide(CommandTest):
    def test_the_sessions_print_what_the_guide_says(self):
        program = self.folder / "tamrix"
        program.write_text(f'#!/bin/sh\nexec {shlex.join(PROGRAM)} "$@"\n')
        program.chmod(0o755)
        self.environment["PATH"] = f"{self.folder}:{os.environ['PATH']}"
        pages = (TOP / "docs/guide/command.md").read_text() + (TOP / "README.md").read_text()
        for session in re.findall(r"^```console\n(.*?)^```", pages, re.M | re.S):
            lines = [line[2:] for line in session.splitlines() if line.startswith("$ ")]
            script = "".join(f"s=$?; printf '%s\\n' {shlex.quote('$ ' + line)}; (exit $s)\n{line}\n" for line in lines)
            ran = subprocess.run(["bash", "-c", "exec 2>&1; " + script], stdout=subprocess.PIPE, cwd=self.folder,
                                 env=self.environment)
            if IS_NATIVE or not re.search("--code-page|tamrix rename", script):
                self.assertEqual(ran.stdout.decode(), session)


class Lines(CommandTest):
    @native_only
    def test_what_is_wrong_is_named_and_nothing_is_done(self):
        self.rows([("", 2, "a command is missing"), ("frobnicate", 2, "frobnicate: no such command"),
                   ("name", 2, "name: needs one more word"), ("name frobnicate", 2, ": name frobnicate: no such"),
                   ("--frob info", 2, "no such option: --frob"), ("name check --frob", 2, "no such option: --frob"),
                   ("info --json=1", 2, "--json takes no value"), ("unc join", 2, "NAME [SHARE]"),
                   ("unc join a b odd", 2, "one argument too many: odd"), ("unc join a --zone", 2, "needs a value"),
                   ("info --text latin1", 2, "latin1"), ("--code-page 12 info", 2, "--code-page 12"),
                   ("info --oem-code-page=866", 2, "--oem-code-page 866"), ("info --code-page 1252x", 2, "1252x"),
                   ("rename --to-mac absent", 2, "absent"),
                   ("unc join --printer Laser", 2, "Laser: a printer needs"), ("unc join ''", 2, "the name is empty"),
                   (r"unc length 'a\b'", 2, "ends a part"), ("unc join --zone a@b c", 2, "a@b: the zone holds"),
                   ("unc join a 'b`c'", 2, "b`c: the share holds"), ("extmap export --json", 2, "--json: this command"),
                   (r"unc split '\\zone@\x'", 1, "names no server"), ("unc join --zone '*' Mercury", "\\\\Mercury\n"),
                   (r"unc split 'c:\x'", 1, r"c:\x: not a path of a server or printer"),
                   *((line, 2, "needs Windows") for line in ("edit ttxt TEXT", "about", "browse", "dialog x.dll 1")),
                   ("edit ttxt TXT", 2, "TXT"), ("browse --title " + "x" * 64, 2, "--title"),
                   ("browse --open --folder", 2, "give one"), ("browse --open --save", 2, "give one"),
                   ("browse --save --folder", 2, "give one"),
                   ("unc split --text utf-8 \u4e00", 1, "\u4e00: not text of this code page"),
                   ("browse --text utf-8 --title \u4e00", 2, "--title: not text of this code page")])
        self.tamrix("unc join", "a" * 32767, status=2, named="longer than 32767 bytes")
        with open("/dev/full", "wb") as full:
            self.tamrix("info", status=2, named="standard output", stdout=full)

    @native_only
    def test_every_command_has_help_a_place_in_the_manual_and_completion(self):
        manual = (TOP / "docs/tamrix.1").read_text()
        listed = self.tamrix("--help").decode().split("Commands:\n")[1].split("\n\n")[0]
        commands = [re.match(r"  ([a-z-]+(?: [a-z-]+)?) ", line)[1] for line in listed.split("\n")]
        self.assertIn("name to-windows", commands)
        for command in commands:
            text = self.tamrix(command + " --help").decode()
            self.assertTrue(text.startswith("usage: tamrix " + command), text)
            example = re.search(rf"\nExample:\n  tamrix ({command}.*)\n", text)[1]
            if command.split()[0] in ("name", "unc", "info", "extmap"):
                self.tamrix(example, status=int(command in ("extmap get", "extmap remove")))
            self.assertRegex(manual, rf"\.Cm .*{command.split()[-1]}\b")
            for option in re.findall(r"^  -(\S+)", text, re.M):
                self.assertRegex(manual, rf"(Fl|\|) {option}\b", command)
        (self.folder / "a file.txt").touch()
        self.assertEqual(self.tamrix("--version"), self.tamrix("info --version"))
        self.assertEqual(self.tamrix("name --help").count(b"\n  name "), 3)
        for line, completions in (("", {command.split()[0] for command in commands}), ("extmap im", {"import"}),
                                  ("unc ", {"join", "length", "split"}), ("name --text ", {"utf-8"}),
                                  ("--json extmap import --dry", {"--dry-run"}), ("info ", set()),
                                  ("extmap import ", {"a file.txt", "data", "map.txt"})):
            self.assertEqual(self.completed(line), completions, line)

    def completed(self, line):
        words = [PROGRAM[0], *line.split(" ")]
        script = (f"source {TOP}/share/completion/tamrix.bash; COMP_WORDS=({shlex.join(words)}); "
                  f"COMP_CWORD={len(words) - 1}; _tamrix {shlex.join([words[0], words[-1], words[-2]])}; "
                  "printf '%s\\n' \"${COMPREPLY[@]}\"")
        ran = subprocess.run(["bash", "-c", script], capture_output=True, text=True, check=True, cwd=self.folder)
        return set(ran.stdout.splitlines()) - {""}


class Names(CommandTest):
    def test_names_go_there_and_back(self):
        names = ((b"Q1: Budget?", b"Q1[058] Budget[063]"), (b"Report.", b"Report[046]"), (b"ab ", b"ab[032]"),
                 (b"Icon\r", b"Icon[013]"), (b"caf\x8e", b"caf\xe9"), (b"\x87", b"[135]"), (b"", b""), (b"-c", b"-c"))
        mac, windows = (b"".join(name + b"\0" for name in side) for side in zip(*names))
        self.assertEqual(self.tamrix("name to-windows --bytes -0", typed=mac), windows)
        self.assertEqual(self.tamrix("name to-mac --bytes -0", typed=windows), mac)

    @native_only
    def test_names_as_arguments_lines_and_paths(self):
        self.rows([("name to-windows a/b -- -c:", "a[047]b\n-c[058]\n"), (r"name to-mac 'd\e\f'", "d\0e\0f\n"),
                   (r"name to-mac --separator :: 'd\e\f'", "d::e::f\n"), ("name to-mac", "")])
        self.assertEqual(self.tamrix("name to-windows", typed=b"a:\r\nlast"), b"a[058][013]\nlast\n")
        self.assertEqual(self.tamrix("name to-mac", typed=b"a[058]\r\n\nlast"), b"a:\n\nlast\n")
        self.assertEqual(self.tamrix("name to-windows", typed=b"a\0b\nc\n", status=1, named="zero byte"), b"c\n")
        folder = os.open(self.folder, os.O_RDONLY)
        ran = subprocess.run([*PROGRAM, "name", "check"], stdin=folder, capture_output=True)
        os.close(folder)
        self.assertEqual((ran.returncode, ran.stderr), (2, b"tamrix: standard input: cannot be read\n"))

    @native_only
    def test_a_check_finds_what_does_not_come_back_or_fit(self):
        settings = b"REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Quillon Systems, Inc.\\File Client]\r\n"
        (self.folder / "quotes.reg").write_bytes(settings + b'"QuoteChars"="#["\r\n')
        (self.folder / "all.reg").write_bytes(settings + b'"QuoteChars"="#%"\r\n"QuoteBracketChars"="{}"\r\n')
        for options, name, windows, reasons, looks in (
                ("", b"a\r\x87b", b"a[013][135]b", {1: "control", 2: "no character of its own"}, []),
                ("", b"x[048][999][58][0:8][058", None, {17: "reserves"}, []),
                ("", b"[058][064]", None, {}, [(0, 58), (5, 64)]),
                ("--registry quotes.reg", b"x[035]", b"x[091]035]", {1: "configured"}, []),
                ("--registry all.reg", b"a#b:{037}", b"a{035}b:{037}", {1: "configured"}, [(4, 37)]),
                ("--code-page 932", b"\x83\x5c:\x81[058]", b"\x83\x5c[058]\x81[058]", {2: "reserves"}, []),
                ("--code-page 932", b"\x83[058]", None, {}, [])):
            with self.subTest(name):
                found, = self.json("name check --bytes " + options, typed=name, status=1 if looks else 0)
                self.assertEqual(found["windowsHex"], (windows or name.replace(b":", b"[058]")).hex().upper())
                self.assertEqual([each["position"] for each in found["quoted"]], list(reasons))
                for each in found["quoted"]:
                    self.assertEqual(each["byte"], name[each["position"]])
                    self.assertIn(reasons[each["position"]], each["reason"])
                self.assertEqual([(each["position"], each["value"]) for each in found["looksQuoted"]], looks)
                self.assertEqual(found["comesBack"], not looks)
        for options, kept, reason, names in (
                ("", True, "", ["a" * 250 + ":", "auxiliary", "COM0", "com10", "lpt.1"]),
                ("", False, "255", ["a" * 251 + ":"]),
                ("", False, "device", ["AUX", "con.txt", "COM1.doc", "nul", "prn .a.b", "lpt9", "conin$"]),
                ("--registry all.reg", False, "character", ["a:b", "tab\t"]),
                ("--code-page 932", False, "final period", ["十時."]),
                ("--code-page 932 --registry all.reg", True, "", ["十時"])):
            for name in self.json("name check " + options, *names, status=0 if kept else 1):
                self.assertEqual((name["comesBack"], name["notKept"] == ""), (True, kept), name)
                self.assertIn(reason, name["notKept"])

    @native_only
    def test_json_keeps_every_byte(self):
        every = bytes(byte for byte in range(1, 256) if byte != 10)
        name, = self.json("name to-windows --bytes", typed=every)
        self.assertEqual((name["from"].encode("latin-1"), bytes.fromhex(name["fromHex"])), (every, every))


class Dialogs(CommandTest):
    def pressing(self, title, button, line, *arguments, **keywords):
        # Presses the button in the dialog with this title, which the line shows.
        with subprocess.Popen(["wine", os.environ["TAMRIX_PRESS_BUTTON"], title, str(button)]) as press:
            printed = self.tamrix(line, *arguments, **keywords)
        self.assertEqual(press.returncode, 0, title)
        return printed

    @windows_only
    def test_dialogs_show_end_and_print_what_is_chosen(self):
        ok, cancel, library = 1, 2, os.path.join(os.path.dirname(PROGRAM[-1]), "Tamrix32.dll")
        chosen = self.pressing("Pick it", ok, r"browse --folder --title 'Pick it' 'C:\windows'")
        self.assertEqual(chosen.lower(), b"c:\\windows\n")
        saving = r"browse --save --title='Keep it' --filter 'Any|*.*' --json 'C:\windows\new.txt'"
        chosen = self.pressing("Keep it", ok, saving)
        self.assertEqual(json.loads(chosen)["path"].lower(), r"c:\windows\new.txt")
        self.pressing("None", cancel, r"browse --title None 'C:\windows'", status=1, named=None)
        self.pressing("Add Filename Extension Mapping", ok, "dialog --adjust", library, "411")
        self.pressing("Edit File Extension Mapping", cancel, "edit TEXT ttxt")
        self.tamrix("dialog", library, "999", status=1, named="no such dialog in")
        self.tamrix("dialog absent.dll 1", status=2, named="absent.dll: not a module")
        self.environment["DISPLAY"] = ":99.9"  # no such screen: nothing can be shown
        self.rows([(line, 2, "could not be shown") for line in ("edit TEXT ttxt", "about", "about --modeless", "browse")])


class Info(CommandTest):
    def test_western_defaults(self):
        info = self.json("info")
        self.assertEqual((info["ansiCodePage"], info["oemCodePage"], info["characterTable"]), (1252, 437, True))
        self.assertEqual((info["open"], info["close"], len(info["quoteSetHex"])), ("[", "]", 2 * 74))


if __name__ == "__main__":
    main()
