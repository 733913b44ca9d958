# One pass over the command: what each line prints, and which part of a line is at fault.
from harness import CommandTest, main


class Lines(CommandTest):
    def test_what_is_wrong_is_named_and_nothing_is_done(self):
        self.rows([("", 2, "a command is missing"), ("frobnicate", 2, "frobnicate: no such command"),
                   ("name", 2, "name: needs one more word"), ("name frobnicate", 2, "no such command: name frobnicate"),
                   ("--frob info", 2, "no such option: --frob"), ("name check --frob", 2, "no such option: --frob"),
                   ("info --json=1", 2, "--json takes no value"), ("unc join", 2, "NAME [SHARE]"),
                   ("unc join a b odd", 2, "one argument too many: odd"), ("unc join a --zone", 2, "--zone needs a value"),
                   ("info --text latin1", 2, "latin1")])


if __name__ == "__main__":
    main()
