#!/usr/bin/env python3
"""Types into real shells, presses Tab, and looks at what the shell made of the line.

    shells.py --vxshow PROGRAM [TEST...]

Each shell runs in tmux, with a folder of its own as its home and no configuration. The completed
line is not run: `printf` is put before it, so that the screen shows the words that the shell parses.
"""

import argparse
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM = pathlib.Path("vxshow")
TIME_LIMIT = 60  # seconds, until an expected text is on the screen
PROMPT = "ready>"

# Names from the network, each under a beginning that no other one has.
NAMES = {
    "aa": "aa rack 1",
    "bb": "bb'quote",
    "cc": "cc$(touch evil)",
    "dd": "dd`touch evil`",
    "ee": "ee$HOME",
    "ff": "ff;touch evil",
    "gg": "gg\"double",
    "hh": "hh!bang",
    "ii": "ii\\back",
    "jj": "jj%d",
    "kk": "kk|touch evil&",
    "ll": "ll~*",
    "mm": "mm\u00fc\u00e9",
    "nn": "nn{1,2}",
    "oo": "oo<evil>",
    "pp": "pp#(=x)",
}
# Never offered: a terminal would not show them as they are.
HIDDEN = ["zz\nline", "zz\ttab", "zz\x1b[2J"]

SHELLS = {
    "bash": (
        ["bash", "--noprofile", "--norc"],
        "bind 'set bell-style none'; PS1='ready>'; source <(vxshow completion bash)",
    ),
    "zsh": (
        ["zsh", "--no-rcs"],
        "autoload -Uz compinit; compinit -u -D; unsetopt beep; PS1='ready>';"
        " source <(vxshow completion zsh)",
    ),
    "fish": (
        ["fish", "--no-config"],
        "function fish_prompt; echo -n 'ready>'; end; function fish_right_prompt; end;"
        " set -g fish_autosuggestion_enabled 0; vxshow completion fish | source",
    ),
}


def filter_value(name):
    """The name as a value of --source."""
    return "name:" + name if set(name) & set(",*?") else name


def state_of(names):
    one = {"10": {"unicast": {"02:00:00:00:00:01": {"vtep": "10.0.0.1"}}}}
    return json.dumps(
        {
            "format": "vxlan-controller-state",
            "version": 1,
            "received": {"switches": {name: one for name in names}},
        }
    )


class Terminal:
    """A shell in tmux."""

    def __init__(self, shell, folder):
        command, setup = SHELLS[shell]
        self.socket = str(folder / "tmux")
        environment = {
            "PATH": f"{PROGRAM.parent}:{os.environ['PATH']}",
            "HOME": str(folder),
            "LC_ALL": "C.UTF-8",
            "TERM": "screen",
            "HISTFILE": "",
            "VXSHOW_SYSTEM_CONFIG": "",
        }
        for name, value in os.environ.items():
            if name.startswith(("ASAN_", "UBSAN_", "LSAN_")):
                environment[name] = value
        words = ["env", "-i", *(f"{k}={v}" for k, v in environment.items()), *command]
        self.tmux(
            "new-session", "-d", "-x", "150", "-y", "50", "-c", str(folder),
            " ".join("'" + word + "'" for word in words),
        )
        self.type(setup + "\n")
        self.wait_for(lambda screen: screen.rstrip().split("\n")[-1] == PROMPT)
        self.type("\x0c")
        self.wait_for(lambda screen: screen.rstrip() == PROMPT)

    def tmux(self, *words):
        return subprocess.run(
            ["tmux", "-u", "-S", self.socket, "-f", "/dev/null", *words],
            check=True, capture_output=True, text=True, env=os.environ | {"LC_ALL": "C.UTF-8"},
        ).stdout

    def type(self, text):
        for part in text.replace("\t", "\0\t\0").replace("\n", "\0\n\0").split("\0"):
            named = {"\t": "Tab", "\n": "Enter", "\x01": "C-a", "\x0c": "C-l"}.get(part)
            if named:
                self.tmux("send-keys", named)
            elif part:
                self.tmux("send-keys", "-l", part)

    def screen(self):
        return self.tmux("capture-pane", "-p", "-J")

    def wait_for(self, holds):
        deadline = time.monotonic() + TIME_LIMIT
        while not holds(self.screen()):
            if time.monotonic() > deadline:
                raise AssertionError("the screen shows\n" + self.screen())
            time.sleep(0.03)
        return self.screen()

    def words_after_tab(self, line):
        """The words of the line after Tab, without the program's name."""
        self.type(line + "\t")
        self.type("\x01")
        self.type("printf 'word[%s]\\n' end ")
        self.type("\n")
        shown = self.wait_for(lambda screen: screen.rstrip().endswith(PROMPT) and "\nword[end]" in screen)
        words = [row[5:].rstrip()[:-1] for row in shown.split("\n") if row.startswith("word[")]
        return words[2:]

    def close(self):
        self.tmux("kill-server")


class ShellTest:
    """The tests, which are the same for every shell."""

    shell = ""

    def setUp(self):
        if not shutil.which(self.shell) or not shutil.which("tmux"):
            self.skipTest(f"{self.shell} or tmux is not installed")
        self.folder = pathlib.Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        (self.folder / "s.json").write_text(state_of([*NAMES.values(), *HIDDEN]), encoding="utf-8")
        (self.folder / "f.toml").write_text(
            '[[source]]\nkind = "hardware_vtep"\nname = "rack 9"\nremotes = ["tcp:192.0.2.1:1"]\n'
        )
        (self.folder / "folder").mkdir()
        (self.folder / "aa rack 1").mkdir()
        self.terminal = Terminal(self.shell, self.folder)
        self.addCleanup(self.terminal.close)

    def completed(self, line):
        self.terminal.type("\x0c")
        self.terminal.wait_for(lambda screen: screen.rstrip() == PROMPT)
        return self.terminal.words_after_tab(line)

    def test_commands_and_options(self):
        self.assertEqual(self.completed("vxshow rou"), ["router"])
        self.assertEqual(self.completed("vxshow mac rec"), ["mac", "received"])
        self.assertEqual(self.completed("vxshow mac received --sou"), ["mac", "received", "--source"])
        self.assertEqual(self.completed("vxshow --fab"), ["--fabric"])
        self.assertEqual(self.completed("vxshow help arp adv"), ["help", "arp", "advertised"])

    def test_values_of_fixed_sets(self):
        self.assertEqual(self.completed("vxshow mac advertised --dest sw")[2:], ["--dest", "switches"])
        self.assertEqual(self.completed("vxshow mac advertised --dest=sw")[2:], ["--dest=switches"])
        self.assertEqual(self.completed("vxshow completion fi"), ["completion", "fish"])
        self.assertEqual(self.completed("vxshow model --of 'router m"), ["model", "--of", "router map"])
        self.assertEqual(self.completed("vxshow model --of router\\ m"), ["model", "--of", "router map"])

    def test_files_and_directories(self):
        self.assertEqual(self.completed("vxshow --state s"), ["--state", "s.json"])
        self.assertEqual(self.completed("vxshow --state=s."), ["--state=s.json"])
        # zsh takes the slash back when the line goes on.
        option, folder = self.completed("vxshow --tables fo")
        self.assertEqual((option, folder.rstrip("/")), ("--tables", "folder"))
        self.assertEqual(self.completed("vxshow capture s."), ["capture", "s.json"])

    def test_names_are_quoted_and_never_evaluated(self):
        for start, name in NAMES.items():
            with self.subTest(name=name):
                value = filter_value(name)
                typed = value[: len(value) - len(name)] + start
                words = self.completed(f"vxshow --state s.json mac received --source {typed}")
                self.assertEqual(words[4:], ["--source", value])
        self.assertFalse((self.folder / "evil").exists())

    def test_a_name_after_an_equals_sign(self):
        words = self.completed("vxshow --state s.json mac received --source=aa")
        self.assertEqual(words[4:], ["--source=aa rack 1"])

    def test_a_name_in_quotes_that_are_open(self):
        for quote in "'\"":
            words = self.completed(f"vxshow --state s.json mac received --source {quote}aa")
            self.assertEqual(words[4:], ["--source", "aa rack 1"])

    def test_names_with_control_characters_are_left_out(self):
        words = self.completed("vxshow --state s.json mac received --source zz")
        self.assertEqual(words[4:], ["--source", "zz"])

    def test_a_list(self):
        words = self.completed("vxshow --state s.json mac received --source jj%d,mm")
        self.assertEqual(words[4:], ["--source", "jj%d,mm\u00fc\u00e9"])

    def test_the_sources_of_a_fabric_file(self):
        words = self.completed("vxshow --fabric f.toml mac received --source ra")
        self.assertEqual(words[4:], ["--source", "rack 9"])

    def test_a_state_that_cannot_be_read_shows_nothing(self):
        self.terminal.type("vxshow --state none.json mac received --source aa\t\t")
        time.sleep(0.5)
        self.terminal.type("end")
        screen = self.terminal.wait_for(lambda screen: "--source aaend" in screen)
        self.assertEqual(
            screen.rstrip(), PROMPT + "vxshow --state none.json mac received --source aaend"
        )


class Bash(ShellTest, unittest.TestCase):
    shell = "bash"


class Zsh(ShellTest, unittest.TestCase):
    shell = "zsh"


class Fish(ShellTest, unittest.TestCase):
    shell = "fish"


def main():
    global PROGRAM
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--vxshow", type=pathlib.Path, required=True)
    wanted, rest = parser.parse_known_args()
    PROGRAM = wanted.vxshow.resolve()
    unittest.main(argv=[sys.argv[0], *rest])


if __name__ == "__main__":
    main()
