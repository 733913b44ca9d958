# One pass over the command: what each line prints, and which part of a line is at fault.
import os
import re
import shlex
import subprocess
import unittest

from harness import IS_NATIVE, PROGRAM, TOP, CommandTest, main, native_only, windows_only


class Guide(CommandTest):
    def test_the_sessions_print_what_the_guide_says(self):
        self.addCleanup(self.tamrix, "extmap remove txt hqx sit cpt", status=(0, 1), named=None)
        program = f"exec 2>&1; tamrix() {{ {shlex.join(PROGRAM)} \"$@\"; }}; "
        pages = (TOP / "docs/guide/command.md").read_text() + (TOP / "README.md").read_text()
        for session in re.findall(r"^```console\n(.*?)^```", pages, re.M | re.S):
            lines = [line[2:] for line in session.splitlines() if line.startswith("$ ")]
            script = "".join(f"s=$?; printf '%s\\n' {shlex.quote('$ ' + line)}; (exit $s)\n{line}\n" for line in lines)
            ran = subprocess.run(["bash", "-c", program + script], stdout=subprocess.PIPE, cwd=self.folder,
                                 env=self.environment, errors="replace")
            is_native = re.search("--code-page|--registry|tamrix rename", script)
            self.assertEqual(ran.stdout if IS_NATIVE or not is_native else session, session)


class Lines(CommandTest):
    @native_only
    def test_what_is_wrong_is_named_and_nothing_is_done(self):
        os.mkfifo(self.folder / "pipe")
        (self.folder / "odd.reg").write_bytes(b"REGEDIT4\r\n\r\n[HKEY_NOWHERE\\x]\r\n")
        self.rows([("", 2, "missing command"), ("frobnicate", 2, "frobnicate: no such command"),
                   ("name", 2, "name: missing subcommand"), ("name frobnicate", 2, ": name frobnicate: no such"),
                   ("--frob info", 2, "no such option: --frob"), ("name check --frob", 2, "no such option: --frob"),
                   ("info --json=1", 2, "--json takes no value"), ("unc join a --zone", 2, "needs a value"),
                   ("info --text latin1", 2, "latin1"), ("--code-page 12 info", 2, "--code-page 12"),
                   ("info --oem-code-page=865", 2, "--oem-code-page 865"), ("info --code-page 1252x", 2, "1252x"),
                   *((f"--registry {path} info", 2, "not a regular file") for path in ("/dev/full", ".", "pipe")),
                   ("--registry odd.reg/x.reg extmap set a TEXT ttxt", 2, "odd.reg/x.reg"),
                   ("info --registry odd.reg", 2, "odd.reg:3"),
                   ("unc join --printer Laser", 2, "Laser: a printer needs"), ("unc join ''", 2, "the name is empty"),
                   (r"unc length 'a\b'", 2, "a delimiter"), ("unc join --zone a@b c", 2, "a@b: the zone contains"),
                   ("unc join a 'b`c'", 2, "b`c: the share con"), ("unc join " + "a" * 32767, 2, "longer than 32767 bytes"),
                   (r"unc split '\\zone@\x'", 1, "no server or printer in"),
                   ("unc join --json --zone '*' M", r'{"path":"\\\\M","pathHex":"5C5C4D"}' "\n"),
                   (r"unc split 'c:\x'", 1, r"c:\x: not a path of a server or printer"),
                   *((line, 2, "needs Windows") for line in ("edit ttxt TEXT", "about", "browse --filter=" + "f" * 126 + " --title " + "t" * 63,
                                                              "dialog x.dll 1")),
                   ("edit ttxt TXT", 2, "TXT"), ("browse --title " + "x" * 64, 2, "--title"),
                   ("browse --open --folder", 2, "use only one"), ("browse --open --save", 2, "use only one"),
                   ("browse --save --folder", 2, "use only one"), ("unc split \u4e00", 1, "\u4e00: cannot be rep"),
                   ("browse --title \u4e00", 2, "--title: cannot be represented")])
        with open("/dev/full", "wb") as full:
            self.tamrix("info", status=2, named="standard output", stdout=full)
        self.tamrix("name check", status=2, named="read standard input", input=None, stdin=os.open(".", os.O_RDONLY))

    @native_only
    def test_every_command_has_help_a_place_in_the_manual_and_completion(self):
        manual = (TOP / "docs/tamrix.1").read_text()
        commands = re.findall(r"^  ([a-z]+(?: [a-z-]+)?) ", self.tamrix("--help"), re.M)
        for command in commands:
            text = self.tamrix(command + " --help")
            form = rf"usage: tamrix {command} \[OPTION...\](.*)[^$]*\nExample:\n  tamrix (.*)\n\n[^$]*\n  --bytes [^$]*\nExit st"
            usage, example = re.match(form, text).groups()
            needed, most = len(re.findall(r" [A-Z]", usage)), len(usage.split())
            if needed:
                self.tamrix(command + " a" * (needed - 1), status=2, named="missing argument: ")
            if "..." not in usage:
                self.tamrix(command + " a" * most + " odd", status=2, named="unexpected argument: odd")
            has_json, fails = "\n  --json " in text, command in ("extmap get", "extmap remove")
            if command.split()[0] in ("name", "unc", "info", "extmap"):
                (self.json if has_json and not fails else self.tamrix)(example, status=int(fails))
            if not has_json:
                self.tamrix(command, "--json", status=2, named="--json: this command has no JSON output")
            self.assertRegex(manual, rf"\.Cm .*{command.split()[-1]}\b")
            for option in re.findall(r"^  -(\S+)", text, re.M):
                self.assertRegex(manual, rf"(Fl|\|) {option}\b", command)
        self.assertEqual(self.tamrix("--version"), self.tamrix("info --version"))
        self.assertRegex(self.tamrix("name --help"), r"usage: tamrix COMMAND (.*\n)*Commands:\n(  name .*\n){3}\n")
        (self.folder / "a file.txt").touch()
        for line, completions in (("", {command.split()[0] for command in commands}), ("extmap im", {"import"}),
                                  ("unc ", {"join", "length", "split"}), ("name --text ", {"utf-8"}),
                                  ("--json extmap import --dry", {"--dry-run"}), ("info ", set()),
                                  ("--by", {"--bytes"}), ("extmap import ", {"a file.txt", "data", "map.txt"})):
            script = ('source "$0"; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _tamrix "$1" "${@: -1}" "${@: -2:1}"; '
                      "printf '%s\\n' \"${COMPREPLY[@]}\"")
            words = ["bash", "-c", script, TOP / "share/completion/tamrix.bash", PROGRAM[0], *line.split(" ")]
            ran = subprocess.run(words, stdout=subprocess.PIPE, text=True, cwd=self.folder, check=True)
            self.assertEqual(set(ran.stdout.splitlines()) - {""}, completions, line)


class Names(CommandTest):
    def test_names_are_bytes_arguments_or_lines(self):
        mac, windows = "Icon\r\0caf\udc8e\0\udc87\0\0-c\0", "Icon[013]\0caf\udce9\0[135]\0\0-c\0"
        self.rows([(f"name to-windows --bytes -0 <<< '{mac}'", windows), (f"name to-mac --bytes -0 <<< '{windows}'", mac)])
        every = os.fsdecode(bytes({*range(1, 256)} - {10}))
        name, = self.json("name to-windows --bytes <<< " + shlex.quote(every))
        self.assertEqual([name["from"].encode("latin-1"), bytes.fromhex(name["fromHex"])], [os.fsencode(every)] * 2)
        self.rows([("name to-windows a/b -- -c:", "a[047]b\n-c[058]\n"), (r"name to-mac 'd\e\f'", "d\0e\0f\n"),
                   (r"name to-mac --separator :: 'd\e\f'", "d::e::f\n"), ("name to-mac", ""),
                   ("name to-windows <<< 'a:\r\nlast'", "a[058][013]\nlast\n"),
                   ("name to-mac <<< 'a[058]\r\n\nlast'", "a:\n\nlast\n"),
                   ("name to-windows <<< 'a\0b\nc\n'", 1, "zero byte", "c\n")])

    @native_only
    def test_a_check_finds_what_does_not_come_back_or_fit(self):
        (self.folder / "quotes.reg").write_text("REGEDIT4\n[HKEY_LOCAL_MACHINE\\Software\\Quillon Systems, Inc.\\File Client]\n"
                                                '"QuoteChars"="#["\n"QuoteBracketChars"="[]"\n')
        only, chosen = "in the quote set", "in the configured quote set"
        parts = "delimiter in paths of servers and printers"
        for options, name, windows, reasons, looks in (
                ("", "a\r\udc87`", "a[013][135][096]", {1: "control character", 2: only, 3: parts}, []),
                ("", "x[048][999][58][0:8][058", None, {17: "reserved by Windows"}, []),
                ("", "[058][064]", None, {}, [(0, 58), (5, 64)]),
                ("--registry quotes.reg", "x[035]", "x[091]035]", {1: chosen}, []),
                ("--code-page 932", "\udc83\\:\udc81[058]", "\udc83\\[058]\udc81[058]", {2: "reserved by Windows"}, []),
                ("--code-page 932", "\udc83[058]", None, {}, [])):
            found, = self.json(f"name check --bytes {options} <<< '{name}'", status=1 if looks else 0)
            quoted = [{"position": at, "byte": os.fsencode(name)[at], "reason": reason} for at, reason in reasons.items()]
            looked = [(each["position"], each["value"]) for each in found["looksQuoted"]]
            kept = os.fsencode(windows or name.replace(":", "[058]")).hex().upper()
            self.assertEqual((found["windowsHex"], found["quoted"], looked, found["comesBack"]),
                             (kept, quoted, looks, not looks), name)
        for options, reason, names in (
                ("", "255", "a" * 251 + ":"), ("--registry quotes.reg", "character", "a:b tab\\\t"),
                ("--code-page 932", "final period", "十時."), ("--registry quotes.reg --code-page 932", "", "十時")):
            for name in self.json(f"name check {options} {names}", status=1 if reason else 0):
                self.assertEqual((name["comesBack"], name["notKept"] == ""), (True, not reason), name)
                self.assertIn(reason, name["notKept"])


class Dialogs(CommandTest):
    @windows_only
    def test_dialogs_show_end_and_print_what_is_chosen(self):
        ok, cancel, library = 1, 2, os.path.join(os.path.dirname(PROGRAM[-1]), "Tamrix32.dll")
        save = r"browse --save --title='Keep it' --filter 'Any|*.*' --json 'C:\windows\new.txt'"
        for title, button, line, status, printed in (
                ("Pick it", ok, r"browse --folder --title 'Pick it' 'C:\windows'", 0, "c:\\windows\n"),
                ("Keep it", ok, save, 0, r'{"path":"c:\\windows\\new.txt",'),
                ("None", cancel, r"browse --title None 'C:\windows'", 1, ""),
                ("Add Filename Extension Mapping", ok, f"dialog --adjust {library} 411", 0, ""),
                ("Edit File Extension Mapping", cancel, "edit TEXT ttxt", 0, "")):
            with subprocess.Popen(["wine", os.environ["TAMRIX_PRESS_BUTTON"], title, str(button)]) as press:
                said = self.tamrix(line, status=status, named=None)
            self.assertEqual((press.returncode, said.lower()[:len(printed) or None]), (0, printed), title)
        self.rows([(f"dialog {library} 999", 1, "no such dialog in"), ("dialog absent.dll 1", 2, "absent.dll: cannot load")])
        self.environment["DISPLAY"] = ":99.9"  # no such screen: nothing can be shown
        self.rows([(line, 2, "cannot show the dialog") for line in ("edit TEXT ttxt", "about", "about --modeless", "browse")])


if __name__ == "__main__":
    main()
