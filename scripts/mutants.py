"""The mutants of a C++ source, found in its text: no compiler is asked, so what does not compile is sorted out later.

A source is read once into a mask of the same length, in which comments, texts and directives are blank; every rule
below is a search in that mask. The same source gives the same mutants in the same order.
"""

import re
from collections import namedtuple

# Where the change is (offsets into the source), what stands there instead, and the kind of change.
Change = namedtuple("Change", "start end text kind")


def mask(source):
    """The source with comments, the insides of texts and directives blanked; and the texts as (start, end)."""
    out, texts = list(source), []
    i, n = 0, len(source)
    while i < n:
        c = source[i]
        if source.startswith("//", i) or (c == "#" and source[:i].rpartition("\n")[2].strip() == ""):
            end = source.find("\n", i)
            end = n if end < 0 else end
            blank(out, source, i, end)
        elif c == '"' or (c == "'" and not source[i - 1].isalnum()):
            end = i + 1
            while source[end] != c:
                end += 2 if source[end] == "\\" else 1
            end += 1
            texts.append((i, end))
            blank(out, source, i + 1, end - 1)
        else:
            end = i + 1
        i = end
    return "".join(out), texts


def blank(out, source, start, end):
    for k in range(start, end):
        if source[k] != "\n":
            out[k] = " "


OPEN, CLOSE = "([{", ")]}"


def pairs(code):
    """The position of the other bracket for each bracket."""
    other, stack = {}, []
    for i, c in enumerate(code):
        if c in OPEN:
            stack.append(i)
        elif c in CLOSE:
            start = stack.pop()
            other[start], other[i] = i, start
    return other


class Source:
    def __init__(self, source):
        self.source = source
        self.code, self.texts = mask(source)
        self.other = pairs(self.code)
        self.bodies = self.find_bodies()

    def find_bodies(self):
        """Whether each character is inside a function's braces."""
        inside = [False] * len(self.code)
        i = 0
        while i < len(self.code):
            if self.code[i] == "{" and self.opens_function(i):
                end = self.other[i]
                inside[i:end + 1] = [True] * (end + 1 - i)
                i = end
            i += 1
        return inside

    def opens_function(self, brace):
        before = self.code[:brace].rstrip()
        if re.search(r"\b(namespace|struct|class|enum)\b[^;{}()]*$", before):
            return False
        # A constructor's initializers, a(b) and c{d}, come before its body.
        initializer = re.compile(r"(?<!:)[,:](?!:)\s*[\w:]+\s*$")
        while before.endswith((")", "}")):
            start = self.other[len(before) - 1]
            m = initializer.search(self.code[:start])
            if not m:
                break
            before = self.code[:m.start()].rstrip()
        return bool(re.search(r"\)\s*(const|override|noexcept)?$", before))

    def parts(self, start, end):
        """The stretch cut at its top-level commas, as (start, end)."""
        found, i, begin = [], start, start
        while i < end:
            c = self.code[i]
            if c in OPEN:
                i = self.other[i]
            elif c == ",":
                found.append((begin, i))
                begin = i + 1
            elif c == "<" and self.code[i - 1] not in " <" and self.code[i + 1] != "<":
                close = re.compile(r"[\w:,\s\*&<]*>").match(self.code, i + 1)
                i = close.end() - 1 if close else i
            i += 1
        found.append((begin, end))
        return [self.trim(*part) for part in found]

    def trim(self, start, end):
        while start < end and self.source[start].isspace():
            start += 1
        while end > start and self.source[end - 1].isspace():
            end -= 1
        return start, end

    def operands(self, start, end):
        """What && and || join at the top of the stretch, as (start, end)."""
        found, i, begin = [], start, start
        while i < end:
            if self.code[i] in OPEN:
                i = self.other[i]
            elif self.code[i:i + 2] in ("&&", "||"):
                found.append((begin, i))
                begin = i + 2
                i += 1
            i += 1
        found.append((begin, end))
        return [self.trim(*part) for part in found]


# Each has a blank on both sides, as the formatter sets it; a template's bracket has not.
BINARY = {
    "==": ["!="], "!=": ["=="], "<": ["<=", ">="], "<=": ["<", ">"], ">": [">=", "<="], ">=": [">", "<"],
    "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "+=": ["-=", "="], "-=": ["+=", "="],
    "&": ["|"], "|": ["&"], "<<": [">>"],
}

# Names that come in pairs, and are easily mistaken for one another.
NAMES = {
    "lower_bound": "upper_bound", "upper_bound": "lower_bound", "any_of": "all_of", "all_of": "any_of",
    "front": "back", "back": "front", "min": "max", "true": "false", "false": "true",
    "BitRateMax": "BitRateActual", "BitRateActual": "BitRateMax",
    "SD_Transcoding": "HD_Transcoding", "HD_Transcoding": "SD_Transcoding",
    "SD_MAX_Transcoding": "HD_MAX_Transcoding", "HD_MAX_Transcoding": "SD_MAX_Transcoding",
    "PIDsModulo": "PIDsModuloMax", "PIDsModuloMax": "PIDsModulo",
    "OSID": "SID", "SID": "OSID", "peakBitRate": "videoPeakBitRate", "number_PIDs_CA": "number_PIDs_CA_Max",
    "Mapa_ONIDs": "Mapa_ONIDs_Inicial", "Mapa_ONIDs_Inicial": "Mapa_ONIDs",
    "MODO_MAX": "MODO_MIN", "MODO_MIN": "MODO_MAX",
    "LOG_DEBUG": "LOG_INFO", "LOG_NOTICE": "LOG_INFO", "LOG_ERR": "LOG_NOTICE",
    "break": "continue", "continue": "break",
}

DECLARATION = re.compile(
    r"(const|auto|static|constexpr|using|friend|struct|class|typedef|template|inline|enum|extern|case|default)\b"
    r"|(?!return\b|delete\b|throw\b|else\b|goto\b)[\w:]+(<[^;]*>)?[\s&\*]+\w+\s*([=;{(]|$)")


def changes(text):
    """Every change of the source, without order or doublets in mind."""
    s = Source(text)
    code = s.code
    for start, end in s.texts:
        if text[start] == '"':
            yield Change(start + 1, start + 1, "~", "text")
        else:
            yield Change(start, end, "'='" if text[start:end] == "'~'" else "'~'", "text")

    for m in re.finditer(r"(?<= )(==|!=|<=|>=|&&|\|\||\+=|-=|<<|<|>|\+|-|&|\|)(?=[ \n])", code):
        if code[:m.start()].endswith("template ") or (m[0] in "&" and code[m.start() - 2] in ">"):
            continue
        for other in BINARY[m[0]]:
            yield Change(m.start(), m.end(), other, "operator")
    for m in re.finditer(r"\+\+|--", code):
        yield Change(m.start(), m.end(), "--" if m[0] == "++" else "++", "operator")
    for m in re.finditer(r"!(?=[\w(*])", code):
        yield Change(m.start(), m.end(), "", "operator")
    for m in re.finditer(r"(?<=[(= ])-(?=[\w])(?!\d+;)", code):
        yield Change(m.start(), m.end(), "", "operator")
    for m in re.finditer(r"(?<![\w.'])(\d+)(?=[uUlL]*\b)(?![\w.]*')", code):
        n = int(m[1])
        for other in [n + 1] + ([n - 1] if n > 0 else []):
            yield Change(m.start(1), m.end(1), str(other), "constant")
    for m in re.finditer(r"(?<![\w])(\w+)(?![\w])", code):
        if m[1] in NAMES and not code[:m.start()].endswith(("#define ", "auto ")):
            yield Change(m.start(), m.end(), NAMES[m[1]], "jump" if m[1] in ("break", "continue")
                         else "level" if m[1].startswith("LOG_") else "name")
    for m in re.finditer(r"Estado::(STATUS_\w+)(?=[;:) ])", code):
        if not code[:m.start()].endswith("case "):
            other = "STATUS_END" if m[1] != "STATUS_END" else "STATUS_UNIFY_INPUTS"
            yield Change(m.start(1), m.end(1), other, "constant")

    yield from conditions(s)
    yield from branches(s)
    yield from arguments(s)
    yield from statements(s)


def conditions(s):
    stretches = []
    for m in re.finditer(r"\b(if|while) (constexpr )?\(", s.code):
        start, end = m.end(), s.other[m.end() - 1]
        semicolon = s.code.find(";", start, end)
        if semicolon > 0:
            start = semicolon + 1
        stretches.append((*s.trim(start, end), m[1]))
    for m in re.finditer(r"\breturn\b(?=[^;]*(&&|\|\||==|!=| < | <= | > | >= ))", s.code):
        end = s.code.find(";", m.end())
        if "{" not in s.code[m.end():end] and "?" not in s.code[m.end():end]:
            stretches.append((*s.trim(m.end(), end), "return"))
    for m in re.finditer(r" = (?=[^;{?]*(&&|\|\|))[^;{?]*;", s.code):
        stretches.append((*s.trim(m.start() + 3, m.end() - 1), "return"))
    for start, end, kind in stretches:
        condition = s.source[start:end]
        # A condition that declares a name cannot be put in brackets.
        declares = re.search(r"[^=!<>]=[^=]", s.code[start:end])
        if kind == "if" and not declares:
            yield Change(start, end, "true", "condition")
        if kind in ("if", "while") and not declares:
            yield Change(start, end, "false", "condition")
        parts = s.operands(start, end)
        for a, b in parts if not declares else []:
            # A comparison is turned round as an operator already.
            if not re.search(r" [=!<>]=? ", s.code[a:b]):
                yield Change(a, b, "!(" + s.source[a:b] + ")", "condition")
            if len(parts) > 1:
                yield Change(a, b, "true", "condition")
                yield Change(a, b, "false", "condition")
        if len(parts) > 1 and not declares:
            yield Change(start, end, "!(" + condition + ")", "condition")


def branches(s):
    for m in re.finditer(r" \? ", s.code):
        i = m.end()
        while s.code[i] != ":" or s.code[i:i + 2] == "::" or s.code[i - 1] == ":":
            i = s.other[i] + 1 if s.code[i] in OPEN else i + 1
        colon, i = i, i + 1
        while s.code[i] not in ",;)}:" or s.code[i:i + 2] == "::" or s.code[i - 1] == ":":
            i = s.other[i] + 1 if s.code[i] in OPEN else i + 1
        a, b = s.trim(m.end(), colon), s.trim(colon + 1, i)
        if "?" not in s.code[b[0]:b[1]]:
            yield Change(a[0], b[1], s.source[b[0]:b[1]] + " : " + s.source[a[0]:a[1]], "branches")


def arguments(s):
    for start in range(len(s.code)):
        if s.code[start] not in "({" or not s.bodies[start]:
            continue
        end = s.other[start]
        stretch = s.code[start + 1:end]
        if ";" in stretch or "," not in stretch:
            continue
        before = s.code[:start].rstrip()
        if s.code[start] == "(" and not re.search(r"[\w>]$", before) or re.search(r"\b(for|if|while)$", before):
            continue
        parts = s.parts(start + 1, end)
        # What a text is formatted with may change places; level and text themselves may not.
        parts = parts[2:] if before.endswith("syslog") else parts
        for (a, b), (c, d) in zip(parts, parts[1:]):
            if s.source[a:b] != s.source[c:d] and "[" not in s.code[a:d]:
                yield Change(a, d, s.source[c:d] + s.source[b:c] + s.source[a:b], "arguments")


def statements(s):
    i = 0
    while i < len(s.code):
        if s.code[i] not in ";" or not s.bodies[i] or in_brackets(s, i):
            i += 1
            continue
        start = statement_start(s, i)
        words = s.code[start:i].strip()
        if words.startswith("return"):
            value = words[6:].strip()
            if value and value not in ("{}", "0", "1", "true", "false", "nullptr"):
                yield Change(start, i, "return {}", "statement")
        elif words in ("break", "continue"):
            yield Change(start, i, "", "jump")
        elif words and not DECLARATION.match(words):
            yield Change(start, i, "", "statement")
        i += 1


def in_brackets(s, i):
    """Whether the semicolon is one of a for."""
    depth = 0
    while i >= 0 and s.code[i] not in "{":
        if s.code[i] in ")}":
            i = s.other[i]
        elif s.code[i] == "(":
            depth += 1
            break
        i -= 1
    return depth > 0


def statement_start(s, end):
    i = end - 1
    while i >= 0 and s.code[i] not in ";{":
        if s.code[i] == "}":
            # A block ends here, unless it is an initializer or a lambda of this statement.
            after = s.code[i + 1:end]
            if not re.match(r"\s*[\).,;(]", after):
                break
            i = s.other[i] - 1
            continue
        if s.code[i] == ")":
            opening = s.other[i]
            if re.search(r"\b(if|for|while|switch)( constexpr)? $", s.code[:opening]):
                break
            i = opening - 1
            continue
        if s.code[i] == ":" and s.code[i - 1] != ":" and s.code[i + 1] != ":" and \
                re.search(r"\b(case [\w:]+|default)$", s.code[:i]):
            break
        i -= 1
    start = i + 1
    m = re.compile(r"\s*(else\b|do\b)?\s*").match(s.code, start)
    return m.end()


Mutant = namedtuple("Mutant", "line before after kind source")


def mutants(text):
    """The mutants of a source in the order of their places: line, text before and after, kind, the whole source."""
    found = {}
    for change in sorted(set(changes(text))):
        if text[change.start:change.end] == change.text:
            continue
        changed = text[:change.start] + change.text + text[change.end:]
        if changed in found:
            continue
        start = text.rfind("\n", 0, change.start) + 1
        end = text.find("\n", change.end)
        end = len(text) if end < 0 else end
        squeeze = lambda t: " ".join(t.split())
        found[changed] = Mutant(
            text.count("\n", 0, change.start) + 1, squeeze(text[start:end]),
            squeeze(text[start:change.start] + change.text + text[change.end:end]), change.kind, changed)
    return list(found.values())


if __name__ == "__main__":
    import sys
    for name in sys.argv[1:]:
        with open(name, encoding="utf-8") as file:
            for m in mutants(file.read()):
                print(f"{name}:{m.line}: [{m.kind}] {m.before}\n    {m.after}")
