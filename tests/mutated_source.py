"""The changes that tests/mutate makes in a source: where a source can be changed, and how each change is put behind a
switch."""

import hashlib
import re

# Included by every changed source.
SWITCHES = r"""
#pragma once
#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>
namespace mutants {
// A byte a place, shared by all processes of a test.
inline unsigned char* marksOfReachedPlaces()
{
    const char* const path = std::getenv("PAGORA_MUTANTS_REACHED");
    const int file = path ? ::open(path, O_RDWR | O_CLOEXEC) : -1;
    if (file < 0)
        return nullptr;
    void* const bytes = ::mmap(nullptr, 65536, PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    ::close(file);
    return bytes == MAP_FAILED ? nullptr : static_cast<unsigned char*>(bytes);
}
inline unsigned char* const reached = marksOfReachedPlaces();
inline int active()
{
    static const int number = std::getenv("PAGORA_MUTANT") ? std::atoi(std::getenv("PAGORA_MUTANT")) : 0;
    return number;
}
inline bool isActive(int id)
{
    if (reached)
        reached[id] = 1;
    return active() == id;
}
template <typename T> T chosen(int id, T original, T other) { return isActive(id) ? other : original; }
inline const char* chosenText(int id, const char* original, const char* other)
{
    return isActive(id) ? other : original;
}
struct Comparison { int id; };
template <typename T> struct Left { const T& value; int id; };
#define PAGORA_COMPARISON(op, other) \
    template <typename T> Left<T> operator op(const T& value, Comparison at) { return { value, at.id }; } \
    template <typename T, typename U> bool operator op(const Left<T>& left, const U& right) \
    { \
        return isActive(left.id) ? static_cast<bool>(left.value other right) \
                                   : static_cast<bool>(left.value op right); \
    }
PAGORA_COMPARISON(<, <=)
PAGORA_COMPARISON(<=, <)
PAGORA_COMPARISON(>, >=)
PAGORA_COMPARISON(>=, >)
PAGORA_COMPARISON(==, !=)
PAGORA_COMPARISON(!=, ==)
}
"""
OTHER = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}

TOKEN = re.compile(
    r"""(?P<skip>//[^\n]*|/\*.*?\*/|^[ \t]*\#[^\n]*|'(?:\\.|[^'\\\n])+')
    |(?P<raw>R"(?P<tag>[^(\s]*)\(.*?\)(?P=tag)")
    |(?P<string>"(?:\\.|[^"\\\n])*"(?:\s*"(?:\\.|[^"\\\n])*")*)
    |(?P<comparison>(?<=\s)(?:==|!=|<=|>=|<|>)(?=\s))
    |(?P<number>(?<![\w.'])(?:0[xX][0-9a-fA-F']+|(?:\d[\d']*\.?\d*(?:[eE][+-]?\d+)?|\.\d+))[uUlLfFzZ]*(?![\w.]))
    """,
    re.X | re.S | re.M,
)
# Contexts that need a constant expression or do not use the value.
CONSTANT_LINE = re.compile(r"\bcase\b|\bstatic_assert\b|^\s*enum\b|\bif constexpr\b|\btemplate\b|operator|= default")


def other_number(text, rng):
    body = re.match(r"[0-9a-fA-FxX'.]+(?:[eE][+-]?\d+)?", text).group()
    is_hex = body[:2] in ("0x", "0X")
    suffix = text[len(body):]
    if not is_hex and ("." in body or "e" in body.lower() or "f" in suffix.lower()):
        value = float(body.replace("'", ""))
        changed = value * 1.5 if value else 1.0
        return repr(changed) + suffix
    value = int(body.replace("'", ""), 0 if is_hex else 10)
    return str(value + 1 if value < 2 or rng.random() < 0.5 else value - 1) + suffix


def other_string(text):
    place = re.search(r'(?<![\\%])[A-Za-z0-9]', text)
    if text == '""':
        return '"?"'
    at = place.end() if place else len(text) - 1
    return text[:at] + "Q" + text[at:]


def places_of(path, rng):
    """Returns the places of a source that can be changed: offset, length, kind, the text and its replacement."""
    source = open(path, encoding="utf-8").read()
    found = []
    for match in TOKEN.finditer(source):
        kind = match.lastgroup if match.lastgroup != "tag" else "raw"
        text = match.group()
        start_of_line = source.rfind("\n", 0, match.start()) + 1
        line_text = source[start_of_line:source.find("\n", match.start())]
        if kind in ("skip", "raw") or match.group("skip") or match.group("raw"):
            continue
        if CONSTANT_LINE.search(line_text):
            continue
        if kind == "number":
            # This is the size of an array or an argument of a template.
            before, after = source[:match.start()].rstrip()[-1:], source[match.end():match.end() + 1]
            if after == ">" or (before == "<" and source[match.start() - 1] == "<"):
                continue
            other = other_number(text, rng)
        elif kind == "string":
            if source[match.end():match.end() + 1] == "s" or source[match.start() - 1:match.start()] in ("u", "L", "8"):
                continue
            other = other_string(text)
        else:
            other = OTHER[text]
        line = source.count("\n", 0, match.start()) + 1
        before = source[:match.start()].splitlines()[-2:]
        found.append(dict(offset=match.start(), length=len(text), kind=kind, text=text, other=other, line=line,
                          context=line_text.strip(), is_constant=any("inline constexpr" in text for text in before)))
    return source, found


def switched(source, places):
    """Returns the source with each of these places behind its switch."""
    pieces, at = [], 0
    for place in sorted(places, key=lambda place: place["offset"]):
        pieces.append(source[at:place["offset"]])
        text, other, number = place["text"], place["other"], place["id"]
        if place["kind"] == "comparison":
            pieces.append(f"{text} ::mutants::Comparison {{ {number} }} {text}")
        elif place["kind"] == "string":
            pieces.append(f"::mutants::chosenText({number}, {text}, {other})")
        else:
            pieces.append(f"::mutants::chosen<decltype({text})>({number}, {text}, {other})")
        at = place["offset"] + place["length"]
    pieces.append(source[at:])
    text = "".join(pieces)
    # Each source has its own constants, because the tests are compiled with the original headers.
    text = re.sub(r"\binline constexpr\b", "static constexpr", text)
    text = re.sub(r"\bconstexpr const char\*(?! const)", "const char* const", text)
    text = re.sub(r"(?<!if )\bconstexpr const\b", "const", text)
    return re.sub(r"(?<!if )\bconstexpr\b", "const", text)


INCLUDE = re.compile(r"^#include[^\n]*\n", re.M)


def digest_of(source):
    return hashlib.sha256(INCLUDE.sub("", source).encode()).hexdigest()[:12]


def key_of(path, source, place):
    """Returns a checksum that does not depend on the source's includes."""
    offset = len(INCLUDE.sub("", source[:place["offset"]]))
    return f"{path}@{digest_of(source)}:{offset}:{place['other']}"
