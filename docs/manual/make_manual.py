#!/usr/bin/env python3
"""Makes the manual pages from the pages of docs/ and from the program's help, with pandoc.

    make_manual.py --vxshow PROGRAM --root CHECKOUT --into FOLDER [--list]

FOLDER gets man1, man5 and man7. A page whose text has not changed is not made again. With --list,
only prints the names of the pages. The date of a page is that of SOURCE_DATE_EPOCH, or today.
"""

import argparse
import datetime
import os
import pathlib
import re
import subprocess

PAGE_FILTER = pathlib.Path(__file__).parent / "page.lua"
# Pages that describe no command: name, section, page of docs/, what it is.
OTHERS = [
    ("vxshow-fabric", 5, "fabric.md", "the file that names the live sources of a fabric"),
    ("vxshow-config", 5, "config.md", "default settings and fabrics by name"),
    ("vxshow-snapshot", 5, "snapshot.md", "a saved state of a VXLAN fabric"),
    ("vxshow-terminal", 7, "terminal.md", "pager, colour and watching"),
    ("vxshow-filters", 7, "filters.md", "the values of filters"),
]


def literal(text):
    """The text in Markdown, without any meaning."""
    return re.sub(r"([!-/:-@\[-`{-~])", r"\\\1", text)


class Help:
    """What the program prints with --help: a description, the usage and sections of entries."""

    def __init__(self, text):
        head, *sections = re.split(r"\n\n(?=[A-Z][a-z]+:\n)", text)
        description, self.usage = head.split("\nUsage: ")
        self.description = " ".join(description.split())
        self.sections = {}
        for section in sections:
            title, _, body = section.partition(":\n")
            body = body.split("\n\n")[0]
            self.sections[title] = self.body(body) if title != "Examples" else body
        self.usage = self.usage.split("\n")[0]

    @staticmethod
    def body(text):
        """Pairs of a name and its description; the lines that follow an entry are indented."""
        entries = []
        for line in text.rstrip("\n").split("\n"):
            if re.match(r"  \S", line):
                name, _, description = line[2:].partition("  ")
                entries.append([name.strip(), description.strip()])
            else:
                entries[-1][1] = (entries[-1][1] + " " + line.strip()).strip()
        return entries

    def commands(self):
        return [words for words, _ in self.sections.get("Commands", [])]


def help_of(program, words):
    environment = {k: v for k, v in os.environ.items() if not k.startswith("VXSHOW_")}
    run = subprocess.run([program, "help", *words], check=True, capture_output=True, text=True,
                         env=environment, stdin=subprocess.DEVNULL)
    return Help(run.stdout)


def entries_in_markdown(title, entries):
    text = f"# {title}\n\n"
    for name, description in entries:
        words = " ".join(f"**{literal(word)}**" if word.startswith("-") else literal(word)
                         for word in name.replace(",", ", ").split(" "))
        text += f"{words}\n:   {literal(description)}\n\n"
    return text


def page_body(path):
    """The page without its title, sections one level up."""
    text = path.read_text(encoding="utf-8")
    text = re.sub(r"\A# .*\n+", "", text)
    fenced = False
    lines = []
    for line in text.split("\n"):
        fenced ^= line.startswith("```")
        lines.append(line[1:] if not fenced and line.startswith("##") else line)
    return "\n".join(lines) + "\n"


def described(body):
    """The text before the first section is the description."""
    return body if body.startswith("# ") else "# Description\n\n" + body


def see_also(names):
    return "# See also\n\n" + ", ".join(f"**{name}**({section})" for name, section in names) + "\n"


def front(name, description, usage):
    synopsis = f"# Synopsis\n\n**{literal(usage)}**\n\n" if usage else ""
    return f"# Name\n\n{name} - {literal(description)}\n\n{synopsis}"


def command_text(root, words):
    """The page of docs/ for the command, or for the group that it is in."""
    folder = root / "docs" / "commands"
    page = folder / (words.replace(" ", "-") + ".md")
    return page if page.exists() else folder / (words.split(" ")[0] + ".md")


def command_page(root, program, words):
    """The page of a command. Its description is that of the program's help."""
    name = "vxshow-" + words.replace(" ", "-")
    shown = help_of(program, words.split())
    options = "".join(entries_in_markdown(title, entries)
                      for title, entries in shown.sections.items())
    body = page_body(command_text(root, words))
    return name, 1, (front(name, shown.description[:1].lower() + shown.description[1:], shown.usage)
                     + described(body) + "\n" + options
                     + see_also([("vxshow", 1), ("vxshow-filters", 7)]))


def program_page(program):
    shown = help_of(program, [])
    sections = ""
    for title, entries in shown.sections.items():
        if title == "Examples":
            sections += "# Examples\n\n```\n" + entries.rstrip() + "\n```\n\n"
        elif title == "Commands":
            sections += entries_in_markdown(
                title, [(f"{words} (vxshow-{words.replace(' ', '-')}(1))", text)
                        for words, text in entries])
        else:
            sections += entries_in_markdown(title, entries)
    others = [(name, section) for name, section, _, _ in OTHERS]
    description = shown.description[:1].lower() + shown.description[1:]
    return "vxshow", 1, front("vxshow", description, shown.usage) + sections + see_also(others)


def pages(root, program):
    yield program_page(program)
    for words in help_of(program, []).commands():
        yield command_page(root, program, words)
    for name, section, page, description in OTHERS:
        yield name, section, (front(name, description, "")
                              + described(page_body(root / "docs" / page))
                              + "\n" + see_also([("vxshow", 1)]))


def plain_roff(roff):
    """Without what not every formatter knows: fonts of fixed width, paragraphs after headings."""
    roff = re.sub(r"^\\f\[C\]\n|^\\f\[R\]\n(?=\.fi)", "", roff, flags=re.MULTILINE)
    roff = re.sub(r"\\f\[V[BI]*\]", r"\\f[B]", roff)
    return re.sub(r"^(\.S[HS] .*\n)\.PP\n", r"\1", roff, flags=re.MULTILINE)


def make(name, section, markdown, folder, version, date):
    path = folder / f"man{section}" / f"{name}.{section}"
    source = folder / "text" / f"{name}.md"
    if path.exists() and source.exists() and source.read_text(encoding="utf-8") == markdown:
        return
    path.parent.mkdir(parents=True, exist_ok=True)
    source.parent.mkdir(parents=True, exist_ok=True)
    roff = subprocess.run(
        ["pandoc", "--standalone", "--from", "commonmark+pipe_tables+definition_lists", "--to", "man",
         "--lua-filter", PAGE_FILTER, "--metadata", f"title={name.upper()}",
         "--metadata", f"section={section}", "--metadata", f"date={date}",
         "--metadata", f"footer={version}", "--metadata", "header=vxshow"],
        input=markdown, check=True, capture_output=True, text=True).stdout
    path.write_text(plain_roff(roff), encoding="utf-8")
    source.write_text(markdown, encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--vxshow", type=pathlib.Path, required=True)
    parser.add_argument("--root", type=pathlib.Path, required=True)
    parser.add_argument("--into", type=pathlib.Path)
    parser.add_argument("--list", action="store_true", help="print the names of the pages")
    wanted = parser.parse_args()
    program = wanted.vxshow.resolve()
    if wanted.list:
        for name, section, _ in pages(wanted.root, program):
            print(f"{name}.{section}")
        return
    version = subprocess.run([program, "--version"], check=True, capture_output=True,
                             text=True).stdout.strip()
    now = os.environ.get("SOURCE_DATE_EPOCH")
    date = (datetime.datetime.fromtimestamp(int(now), datetime.timezone.utc).date() if now
            else datetime.date.today())
    for name, section, markdown in pages(wanted.root, program):
        make(name, section, markdown, wanted.into, version, date)


if __name__ == "__main__":
    main()
