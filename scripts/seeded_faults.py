"""Finds the places in a C++ source where a small fault can be seeded, for scripts/mutate. It uses tokens and the spaces
that clang-format inserts (a binary operator has spaces on both sides, a template bracket does not). A place that it
misinterprets does not compile and is not counted."""
import collections
import re

TOKEN = re.compile(r"""
  (?P<space>\s+)
| (?P<comment>//[^\n]*|/\*.*?\*/)
| (?P<text>R"(?P<mark>[^()\\\s]*)\(.*?\)(?P=mark)"|(?:u8|[uUL])?"(?:\\.|[^"\\])*")
| (?P<char>(?:u8|[uUL])?'(?:\\.|[^'\\])+')
| (?P<number>\.?\d(?:'\w|[\w.])*)
| (?P<word>[A-Za-z_]\w*)
| (?P<op><=>|<<=|>>=|\.\.\.|->\*|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|::|.)
""", re.S | re.X)

Token = collections.namedtuple("Token", "kind text start end")

SWAPS = {
    "<": ("relation", ["<=", ">="]), ">": ("relation", [">=", "<="]), "<=": ("relation", ["<", ">"]),
    ">=": ("relation", [">", "<"]), "==": ("relation", ["!="]), "!=": ("relation", ["=="]),
    "&&": ("logic", ["||"]), "||": ("logic", ["&&"]), "+": ("arithmetic", ["-"]), "-": ("arithmetic", ["+"]),
    "+=": ("arithmetic", ["-="]), "-=": ("arithmetic", ["+="]),
}
STEPS = {"++": "--", "--": "++"}
OPPOSITES = {"true": "false", "false": "true", "TRUE": "FALSE", "FALSE": "TRUE"}
ASSIGNMENTS = {"=", "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^=", "<<=", ">>="}
PAIRS = {"(": ")", "[": "]", "{": "}"}
# Words that begin a statement which is neither a call nor an assignment.
OTHER_STATEMENTS = set("""if else for while do switch case default return break continue goto using typedef const constexpr
    static auto struct class union enum template namespace extern public private protected friend static_assert throw try
    inline explicit virtual unsigned signed operator""".split())


class Fault(collections.namedtuple("Fault", "file line column kind start end old new")):
    """A change of one file: the text from `start` to `end` becomes `new`."""

    def __str__(self):
        shown = [re.sub(r"\s+", " ", text) or "(nothing)" for text in (self.old, self.new)]
        return f"{self.file}:{self.line}:{self.column} {self.kind} {shown[0]} -> {shown[1]}"

    def applied(self, text):
        return text[:self.start] + self.new + text[self.end:]

    def line_of(self, text):
        return text.split("\n")[self.line - 1].strip()


def tokens(text):
    """The tokens that are compiled, without preprocessor lines."""
    found, at = [], 0
    while at < len(text):
        match = TOKEN.match(text, at)
        if match["op"] == "#" and not text[text.rfind("\n", 0, at) + 1:at].strip():
            at = re.compile(r"(?:\\\n|[^\n])*").match(text, at).end()
            continue
        if match.lastgroup not in ("space", "comment") and not match["comment"]:
            kind = next(kind for kind in ("text", "char", "number", "word", "op") if match[kind] is not None)
            found.append(Token(kind, match[0], match.start(), match.end()))
        at = match.end()
    return found


def closings(code):
    """The index of the bracket that closes each opening one, and the other way round."""
    pairs, opened = {}, []
    for index, token in enumerate(code):
        if token.kind != "op":
            continue
        if token.text in PAIRS:
            opened.append(index)
        elif token.text in PAIRS.values() and opened:
            pairs[opened[-1]] = index
            pairs[index] = opened.pop()
    return pairs


def left_out(code, pairs):
    """Indexes inside static assertions, which the compiler checks."""
    skipped = set()
    for index, token in enumerate(code):
        if token.text == "static_assert" and index + 1 in pairs:
            skipped.update(range(index, pairs[index + 1] + 1))
    return skipped


def by_one(number):
    match = re.fullmatch(r"(0[xX][0-9A-Fa-f]+|\d+)([uUlL]*)", number.replace("'", ""))
    if not match:
        return []
    value = int(match[1], 0 if not re.fullmatch(r"0\d+", match[1]) else 8)
    shown = (lambda v: f"0x{v:X}") if match[1][:2] in ("0x", "0X") else str
    return [shown(other) + match[2] for other in (value + 1, value - 1) if other >= 0]


def next_character(literal):
    body = literal.strip("'")
    follower = chr(ord(body) + 1) if len(body) == 1 and " " <= body < "~" else ""
    return [f"'{follower}'"] if follower and follower not in "'\\" else []


def is_declaration(head):
    """Whether the tokens before the first bracket or assignment are a type and a name."""
    for before, after in zip(head, head[1:]):
        if after.kind == "word" and (before.kind == "word" or before.text == ">"):
            return before.text != "delete"
        if before.text in ("*", "&", "&&") and after.kind == "word" and before is not head[0]:
            return True
    return False


def statement_starts(code, pairs):
    """Indexes where a statement begins, only inside functions."""
    inside = [False]
    head = []
    for index, token in enumerate(code):
        text = token.text if token.kind == "op" else ""
        before = code[index - 1].text if index else ""
        is_start = before in ("{", "}", ";", "else", "do")
        if before == ")" and index - 1 in pairs:
            opening = pairs[index - 1]
            is_start = opening > 0 and code[opening - 1].text in ("if", "while", "for", "switch", "constexpr")
        if before == ":" and index > 2 and (code[index - 2].text == "default" or any(t.text == "case" for t in head)):
            is_start = True
        if is_start and inside[-1]:
            yield index
        if text == "{":
            words = {t.text for t in head if t.kind == "word"}
            named = words & {"class", "struct", "union", "enum", "namespace"} and not any(t.text == "(" for t in head)
            inside.append(not named and not ("extern" in words and len(head) == 2))
            head = []
        elif text == "}":
            if len(inside) > 1:
                inside.pop()
            head = []
        elif text in (";", ":"):
            head = []
        else:
            head.append(token)


def statement_end(code, pairs, start):
    index = start
    while index < len(code) and code[index].text not in (";", "}"):
        if code[index].kind == "op" and code[index].text in PAIRS:
            if code[index].text == "{" and index in pairs and code[pairs[index] - 1].text in (";", "}"):
                return None
            index = pairs.get(index, len(code))
        index += 1
    return index if index < len(code) and code[index].text == ";" else None


def deletions(code, pairs):
    for start in statement_starts(code, pairs):
        first = code[start]
        if first.text in OTHER_STATEMENTS or (first.kind != "word" and first.text not in ("*", "++", "--", "(", "::")):
            continue
        end = statement_end(code, pairs, start)
        if end is None or end == start:
            continue
        statement = code[start:end]
        stop = next((i for i, t in enumerate(statement) if t.kind == "op" and t.text in ASSIGNMENTS | {"(", "{"}),
                    len(statement))
        if is_declaration(statement[:stop]):
            continue
        assigns = any(t.kind == "op" and t.text in ASSIGNMENTS for t in statement[stop:stop + 1])
        steps = statement[0].text in STEPS or statement[-1].text in STEPS
        if assigns or steps or statement[-1].text == ")" or statement[0].text == "delete":
            yield "deleted", statement[0].start, code[end].end, ";"


def results(code, pairs):
    for index, token in enumerate(code):
        if token.text != "return" or index + 1 >= len(code) or code[index + 1].text == ";":
            continue
        end = statement_end(code, pairs, index + 1)
        if end is None:
            continue
        start, stop = code[index + 1].start, code[end - 1].end
        if end == index + 2 and (code[index + 1].kind in ("number", "text") or code[index + 1].text in
                                 [*OPPOSITES, "nullptr"]):
            continue  # these are handled as constants
        if [t.text for t in code[index + 1:end]] == ["{", "}"]:
            continue
        for constant in ("{}", "1"):
            yield "result", start, stop, constant


def flags(code, spaced):
    """Removes one operand of a chain of flags."""
    for index, token in enumerate(code):
        if token.text not in ("|", "&") or not spaced(token):
            continue
        first = index + 1
        if token.text == "&":
            if code[first].text != "~":
                continue
            first += 1
        last = first
        while code[last].kind == "word" and code[last + 1].text == "::":
            last += 2
        if code[last].kind in ("word", "number") and code[last + 1].text not in ("(", "[", ".", "->", "<", "::"):
            yield "flag", code[index - 1].end, code[last].end, ""
        if token.text == "|" and code[index - 1].kind == "word" and code[index - 2].text in ("(", ",", "=", "return"):
            yield "flag", code[index - 1].start, code[index + 1].start, ""


def changes(text):
    """Every possible change, as (kind, start, end, new text)."""
    code = tokens(text)
    pairs = closings(code)
    skipped = left_out(code, pairs)

    def spaced(token):
        return text[token.start - 1:token.start].isspace() and text[token.end:token.end + 1].isspace()

    found = []
    for index, token in enumerate(code):
        before = code[index - 1].text if index else ""
        if before == "operator":
            continue
        if token.kind == "op" and token.text in SWAPS and spaced(token):
            kind, others = SWAPS[token.text]
            found += [(kind, token.start, token.end, other) for other in others]
        elif token.kind == "op" and token.text in STEPS:
            found.append(("arithmetic", token.start, token.end, STEPS[token.text]))
        elif token.kind == "op" and token.text == "!":
            found.append(("not", token.start, token.end, ""))
        elif token.kind == "number":
            found += [("constant", token.start, token.end, other) for other in by_one(token.text)]
        elif token.kind == "char":
            found += [("constant", token.start, token.end, other) for other in next_character(token.text)]
        elif token.kind == "word" and token.text in OPPOSITES:
            found.append(("constant", token.start, token.end, OPPOSITES[token.text]))
        elif token.text in ("break", "continue"):
            other = "continue" if token.text == "break" else "break"
            found += [("jump", token.start, token.end, new) for new in (other, "")]
    found += [*deletions(code, pairs), *results(code, pairs), *flags(code, spaced)]
    proven = {code[index].start for index in skipped}
    return sorted(change for change in found if change[1] not in proven)


def faults(name, text):
    """Every fault in a file, in the order of their positions."""
    found = []
    for kind, start, end, new in changes(text):
        line_start = text.rfind("\n", 0, start) + 1
        found.append(Fault(name, text.count("\n", 0, start) + 1, start - line_start + 1, kind, start, end,
                           text[start:end], new))
    return found


def is_data_row(line):
    """Whether the line is a row of a table: only literals and punctuation."""
    bare = re.sub(r"//.*|'(?:\\.|[^'\\])+'|\"(?:\\.|[^\"\\])*\"|0[xX][0-9A-Fa-f]+|\d+", "", line)
    return not re.search(r"\w", bare) and "," in line
