#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Checks the help: the topic of each form, found by its context number or title, names all buttons that can be shown and
quotes all messages; all links lead to topics, and the contents list all topics."""
import html, re, sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
FOLDERS = ("core", "reference", "survey", "exchange", "feedback", "analysis", "improvement", "search")
LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')


def files(suffix):
    return [path for folder in FOLDERS for path in sorted((ROOT / folder).rglob("*" + suffix))]


def plain(text):
    return " ".join(html.unescape(re.sub(r"<[^>]*>", "", text)).split())


def argument(code, start, number=0):
    depth = 0
    for token in re.finditer(r'"(?:[^"\\\n]|\\.)*"|[(\[{]|[)\]}]|,', code[start:]):
        depth += (token[0] in "([{") - (token[0] in ")]}")
        if depth < 0 or (token[0] == "," and depth == 0):
            if number == 0 or depth < 0:
                return code[start:start + token.start()]
            return argument(code, start + token.end(), number - 1)
    raise ValueError("a call is not closed")


def messages(code):
    """The expressions of messages: the arguments of msgBox and of a table's check. For a name in them also the values
    assigned to it, the body of the function of that name, and the arguments of functions with a parameter of that name."""
    for call in re.finditer(r"\b(msgBox)\(|->check\(", code):
        given = argument(code, call.end(), 0 if call[1] else 1)
        yield given
        for name in set(re.findall(r"\b[a-z]\w+\b", LITERAL.sub("", given))):
            yield from re.findall(rf"\b{name} \+?= ([^;]*);", code)
            yield from re.findall(rf"^\w[^\n]*\b{name}\([^\n]*\n((?:[ ][^\n]*\n)*)", code, re.MULTILINE)
            for function in re.findall(rf"(\w+)\(const QString& {name}\)", code):
                yield from (argument(code, use.end()) for use in re.finditer(rf"\b{function}\(", code))


def pieces(code):
    for text in LITERAL.findall(re.sub(r'"\n\s*"', "", code)):
        words = (plain(part) for part in re.split(r"%\d", text.replace(r"\r\n", " ")))
        yield from (part for part in words if len(re.findall("[A-Za-z]", part)) > 3)


source = (ROOT / "home/GWL HELP 2.1.HLP").read_text(encoding="utf-8")
topics = {}  # context number: title, text with its links
for part in re.split(r"(?=<h2 )", source)[1:]:
    head = re.match(r'<h2 id="c(\d+)"><a name="c\1">(.*?)</a></h2>', part)
    topics[int(head[1])] = (plain(head[2]), part)
links = re.findall(r'href="([^"]*)"', source)
faults = [f"the link {link} leads to no topic" for link in links if not (link[:2] == "#c" and int(link[2:]) in topics)]
faults += [f"the contents do not list c{n}" for n in topics if n and f'"#c{n}"' not in topics[0][1]]
faults += [f"c{n} does not close each <{tag}>" for n, (_, text) in topics.items() for tag in ("table", "ul", "ol", "li", "tr", "td")
           if len(re.findall(f"<{tag}[ >]", text)) != text.count(f"</{tag}>")]

checked, forms, shared = 0, {}, {}
for path in files(".h"):  # the forms that share a class have its controls too
    for form, base in re.findall(r"DefaultForm<(\w+), (\w+)>", path.read_text(encoding="utf-8")):
        shared.setdefault(base, {})[form] = path.with_suffix(".cpp")
for path in files(".ui"):
    ui = ElementTree.parse(path)
    title = ui.findtext("widget/property[@name='windowTitle']/string")
    for form, source_file in shared.get(ui.findtext("class"), {path.stem: path.with_suffix(".cpp")}).items():
        code = source_file.read_text(encoding="utf-8")
        context = re.search(r"helpContext(?: =|\(\) const \{\s*return) (\d+);", code)
        number = int(context[1]) if context else {name: number for number, (name, _) in topics.items()}.get(title)
        forms[form] = plain(topics[number][1]) if number in topics else ""
        for button in ui.iterfind(".//widget"):
            text = [button.findtext(f"property[@name='{name}']/string") for name in ("text", "toolTip")]
            hidden = button.find("property[@name='visible']/bool") is not None and f"{button.get('name')}->show()" not in code
            caption = (text[0] or text[1] or "").replace("&", "") if button.get("class").endswith("Button") else ""
            if not hidden and caption not in forms[form]:
                faults.append(f"{form}: the button {caption!r} is missing in topic {number}")
for path in files(".cpp"):
    topic = forms.get(path.stem.split("_")[0], plain(source))
    texts = {piece for message in messages(path.read_text(encoding="utf-8")) for piece in pieces(message)}
    faults += [f"{path.name}: the message {text!r} is missing in its topic" for text in texts if text not in topic]
    checked += len(texts)
print(f"{len(topics)} topics, {len(links)} links, {len(forms)} forms, {checked} texts of messages", *faults, sep="\n")
sys.exit(1 if faults or not links or not forms or not checked else 0)
