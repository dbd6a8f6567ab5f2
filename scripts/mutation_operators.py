"""The changes that scripts/mutate makes, and where in a file they apply."""

import dataclasses
import itertools
import re

TOKEN = re.compile(r"""
    (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<directive>^[ \t]*\#(?:[^\n\\]|\\.|\\\n)*)
  | (?P<string>(?:u8|u|U|L)?"(?:[^"\\\n]|\\.)*"(?:_\w+)?)
  | (?P<char>(?:u8|u|U|L)?'(?:[^'\\\n]|\\.)+')
  | (?P<number>(?:0[xX][0-9a-fA-F']+|\d[\d']*(?:\.\d+)?)(?:[a-zA-Z_]\w*)?)
  | (?P<name>[A-Za-z_]\w*)
  | (?P<operator><=>|->\*|<<=|>>=|\.\.\.|::|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|[-+*/%<>=!&|^~?:;,.(){}\[\]])
  | (?P<space>\s+)
  | (?P<other>.)
""", re.VERBOSE | re.DOTALL | re.MULTILINE)

SWAPPED_OPERATORS = {
    "<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&",
    "+": "-", "-": "+", "*": "/", "/": "*", "+=": "-=", "-=": "+=",
}
SWAPPED_NAMES = {
    "true": "false", "false": "true",
    "DemiBold": "Normal", "Medium": "Normal",
    "titleSize": "captionSize", "detailSize": "titleSize", "captionSize": "detailSize",
    "AlignLeft": "AlignRight", "AlignRight": "AlignLeft", "AlignVCenter": "AlignTop", "AlignHCenter": "AlignLeft",
    "AlignTop": "AlignBottom",
    "WindowText": "Window", "Window": "WindowText", "Highlight": "Window", "HighlightedText": "Window",
    "ButtonText": "Highlight", "Base": "Window",
    "orange": "green", "green": "orange", "secondary": "hairline", "hairline": "secondary",
    "StrongFocus": "NoFocus", "NoFocus": "StrongFocus",
    "Granted": "Denied", "Denied": "NotDetermined", "max": "min", "min": "max", "front": "back", "back": "front",
    "startsWith": "endsWith", "endsWith": "startsWith",
}
# These open or declare something, so they cannot be left out.
NO_STATEMENT = {
    "return", "co_return", "if", "else", "for", "while", "do", "switch", "case", "default", "break", "continue", "using",
    "const", "constexpr", "static", "auto", "struct", "class", "enum", "namespace", "template", "public", "private",
    "protected", "try", "catch", "typedef", "friend", "inline", "virtual", "explicit", "static_assert", "goto", "bool",
    "int", "double", "float", "quint32", "qreal", "unsigned", "Q_OBJECT",
}


# Two of these in a row may be swapped: no other code runs in between and could see the difference.
PLAIN_ASSIGNMENT = re.compile(r"[\w.>-]+(?: = [^()]*|\.(?:reset|clear)\(\));")
# The order in which properties of a view are set or signals are connected does not matter either.
PROPERTY = re.compile(r"(?:[\w]+(?:->|\.))?(?:set[A-Z]\w*|connect)\(.*", re.DOTALL)


@dataclasses.dataclass(frozen=True)
class Token:
    kind: str
    text: str
    start: int
    end: int


@dataclasses.dataclass(frozen=True)
class Mutant:
    path: str
    line: int
    source_line: str
    kind: str
    start: int
    end: int
    replacement: str
    before: str

    @property
    def change(self):
        return f"{shorten(self.before)} => {shorten(self.replacement) or '(nothing)'}"

    def __str__(self):
        return f"{self.path}:{self.line}: {self.kind}: {self.change}"


def shorten(text):
    text = " ".join(text.split())
    return text if len(text) <= 110 else text[:70] + " … " + text[-37:]


@dataclasses.dataclass(frozen=True)
class Region:
    """A part of a file that can be repeated in variants, one of which a switch selects at run time.

    form: "run" and "statement" are whole statements, "condition" and "value" expressions, "entry" a function's brace.
    """
    start: int
    end: int
    form: str


@dataclasses.dataclass
class Frame:
    """An open bracket; statements are collected in blocks."""
    opener: str
    is_block: bool
    first: int
    statements: list


class Mutator:
    def __init__(self, path, text):
        self.path = path
        self.text = text
        self.lines = text.split("\n")
        self.mutants = []
        self.regions = []
        tokens = []
        for match in TOKEN.finditer(text):
            if match.lastgroup not in ("comment", "directive", "space"):
                tokens.append(Token(match.lastgroup, match.group(), match.start(), match.end()))
        self.tokens = tokens

    def add(self, kind, start, end, replacement):
        line = self.text.count("\n", 0, start) + 1
        before = self.text[start:end]
        if before != replacement:
            self.mutants.append(Mutant(self.path, line, self.lines[line - 1].strip(), kind, start, end, replacement,
                                       before))

    def is_spaced(self, token):
        """A binary operator, recognised by the formatter's spaces."""
        before = self.text[token.start - 1:token.start]
        after = self.text[token.end:token.end + 1]
        return before.isspace() and after.isspace()

    def is_translation_context(self, index):
        return self.tokens[index - 2].text == "QT_TRANSLATE_NOOP"

    def in_assertion(self, index):
        while index >= 0 and self.tokens[index].text not in (";", "{", "}"):
            if self.tokens[index].text in ("static_assert", "operator", "template"):
                return True
            index -= 1
        return False

    def run(self):
        for index, token in enumerate(self.tokens):
            if not self.in_assertion(index):
                self.mutate_token(index, token)
        self.mutate_statements()
        self.mutants.sort(key=lambda mutant: (mutant.start, mutant.kind, mutant.replacement))
        return self.mutants

    def mutate_token(self, index, token):
        text = token.text
        if token.kind == "operator" and self.is_spaced(token):
            if text in SWAPPED_OPERATORS:
                self.add("operator", token.start, token.end, SWAPPED_OPERATORS[text])
            elif text == "?":
                self.add("condition", token.start, token.end, "== false ?")
        elif token.kind == "name" and text in SWAPPED_NAMES:
            self.add("name", token.start, token.end, SWAPPED_NAMES[text])
        elif token.kind == "number":
            self.mutate_number(token)
        elif token.kind == "string" and not self.is_translation_context(index):
            closing = text.rindex('"')
            self.add("text", token.start, token.end, text[:closing] + "~" + text[closing:])
        elif token.kind == "char":
            inner = text[text.index("'") + 1:-1]
            self.add("text", token.start, token.end, text.replace(f"'{inner}'", "'#'" if inner != "#" else "'~'"))
        elif token.kind == "name" and text == "if" and self.tokens[index + 1].text == "(":
            self.negate(index + 1)

    def mutate_number(self, token):
        match = re.fullmatch(r"(0[xX][0-9a-fA-F']+|\d[\d']*)(\.\d+)?(\w*)", token.text)
        if not match:
            return
        whole, fraction, suffix = match.groups()
        if fraction is not None or suffix in ("F", "f"):
            value = float(whole + (fraction or ""))
            self.add("number", token.start, token.end, repr(value * 1.5 if value else 0.5) + suffix)
        elif whole[:2] in ("0x", "0X"):
            value = int(whole.replace("'", ""), 16)
            self.add("number", token.start, token.end, hex(value + 0x10 if value < 0xf0 else value - 0x10) + suffix)
        else:
            value = int(whole.replace("'", ""))
            self.add("number", token.start, token.end, str(value + 1) + suffix)
            if value > 1:
                self.add("number", token.start, token.end, str(value - 1) + suffix)

    def closing(self, index):
        depth = 0
        for position in range(index, len(self.tokens)):
            depth += self.tokens[position].text in ("(", "[", "{")
            depth -= self.tokens[position].text in (")", "]", "}")
            if depth == 0:
                return position
        return len(self.tokens) - 1

    def negate(self, opening):
        end = self.closing(opening)
        inner = self.tokens[opening + 1:end]
        if not any(token.text in ("=", ";") for token in inner):
            start, stop = inner[0].start, inner[-1].end
            self.regions.append(Region(start, stop, "condition"))
            self.add("condition", start, stop, f"!({self.text[start:stop]})")

    def mutate_statements(self):
        stack = [Frame("", False, 0, [])]
        for index, token in enumerate(self.tokens):
            top = stack[-1]
            if token.text in ("(", "[", "{"):
                is_block = token.text == "{" and self.opens_block(index)
                if is_block and len([frame for frame in stack if frame.is_block]) == 0:
                    self.return_early(top.first, index)
                stack.append(Frame(token.text, is_block, index + 1, []))
            elif token.text in (")", "]", "}"):
                closed = stack.pop()
                if closed.is_block:
                    self.swap(closed.statements)
                if token.text == "}" and stack[-1].opener in ("", "{"):
                    # After a block, unless the brace belongs to an expression that continues.
                    following = self.tokens[index + 1].text if index + 1 < len(self.tokens) else ""
                    if following not in (";", ",", ")", "."):
                        stack[-1].first = index + 1
                        stack[-1].statements.append(None)
            elif token.text == ";" and top.opener in ("", "{"):
                if top.is_block:
                    top.statements.append(self.statement(top.first, index))
                self.note_value(top.first, index)
                top.first = index + 1
            elif token.text == ":" and top.is_block and self.tokens[top.first].text in ("case", "default"):
                top.first = index + 1
                top.statements.append(None)

    def opens_block(self, index):
        previous = self.tokens[index - 1] if index else None
        if previous is None:
            return False
        if previous.text in (")", "const", "override", "noexcept", "else", "try", "do", "mutable", ":"):
            return True
        if previous.text == "]":  # A lambda without parameters, not an element of a list.
            return True
        if previous.text in (";", "{", "}"):
            return previous.text != "{" or self.tokens[index + 1].kind == "name"
        # A lambda's result type.
        return any(token.text == "->" and self.tokens[position - 1].text == ")" and index - position < 8
                   for position, token in enumerate(self.tokens[max(0, index - 8):index], max(0, index - 8)))

    def statement(self, first, last):
        """Adds a statement's own changes; returns its (start, end) if it may be left out, else None."""
        if first >= last:
            return None
        tokens = self.tokens[first:last]
        start, end = tokens[0].start, self.tokens[last].end
        if tokens[0].text in ("return", "co_return"):
            self.regions.append(Region(start, end, "statement"))
        if tokens[0].text in ("return", "co_return") and len(tokens) > 1:
            rest = self.text[tokens[1].start:tokens[-1].end]
            if rest not in ("{}", "nullptr", "std::nullopt", "true", "false", "QString()") and rest[0] != "{" \
                    and not re.fullmatch(r"\w+\{\}", rest):
                self.add("return", tokens[1].start, tokens[-1].end, "{}")
            return None
        if tokens[0].text in NO_STATEMENT or self.is_declaration(tokens):
            return None
        self.add("statement", start, end, ";")
        self.regions.append(Region(start, end, "statement"))
        return start, end

    def note_value(self, first, last):
        """Adds the initial value in a declaration as a region."""
        tokens = self.tokens[first:last]
        signs = [position for position, token in enumerate(tokens) if token.text == "="]
        words = {token.text for token in tokens[:signs[0]]} if signs else set()
        if not signs or not self.is_declaration(tokens) and not words & {"const", "constexpr", "auto"}:
            return
        value = tokens[signs[0] + 1:]
        if value and value[0].text not in ("{", "[") and not words & {"using", "operator", "(", "{"}:
            self.regions.append(Region(value[0].start, value[-1].end, "value"))

    @staticmethod
    def is_declaration(tokens):
        if tokens[0].text in ("throw", "delete", "co_await"):
            return False
        position = 1
        angle = 0
        while position < len(tokens):  # Skips a qualified name and its template arguments.
            text = tokens[position].text
            angle += text == "<"
            angle -= text == ">"
            if angle == 0 and tokens[position].kind == "name" and tokens[position - 1].text not in ("::", ".", "->"):
                return True
            if angle == 0 and text in ("(", "=", "[", ".", "->", "+=", "-=", "<<", "++"):
                return False
            position += 1
        return False

    def swap(self, statements):
        for run, group in itertools.groupby(statements, bool):
            group = list(group)
            if run and len(group) > 1:
                self.regions.append(Region(group[0][0], group[-1][1], "run"))
        for one, other in zip(statements, statements[1:]):
            if one and other:
                between = self.text[one[1]:other[0]]
                first, second = self.text[one[0]:one[1]], self.text[other[0]:other[1]]
                independent = any(form.fullmatch(first) and form.fullmatch(second)
                                  for form in (PLAIN_ASSIGNMENT, PROPERTY))
                if first != second and not independent:
                    self.add("order", one[0], other[1], second + between + first)

    def return_early(self, first, index):
        head = " ".join(token.text for token in self.tokens[first:index])
        name = re.match(r"(?:static )?void \w+|(\w+) :: \1 \(", head)
        body = self.text[self.tokens[index].end:self.tokens[self.closing(index)].start]
        if name and body.strip():
            keyword = "co_return" if "co_await" in body else "return"
            position = self.tokens[index].end
            self.add("early return", position - 1, position, "{ " + keyword + ";")
            self.regions.append(Region(position - 1, position, "entry"))
