"""Whether bash, zsh and fish complete each option of each verb, and no other: completions_test.py VORN SOURCES.

What there is comes from `vorn VERB --help`. A shell that is not installed is left out, and named.
"""
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

VORN, PACKAGING = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve() / "packaging"

BASH = 'source "$1/vorn.bash-completion"; COMP_WORDS=(vorn "${@:2}"); COMP_CWORD=$(($# - 1)); _vorn; printf "%s\\n" "${COMPREPLY[@]}"'
FISH = 'source $argv[1]/vorn.fish; complete -C "vorn $argv[2..]"'
# A terminal in which the words are typed and Tab is pressed; what stands on it afterwards.
ZSH = r"""
zmodload zsh/zpty
zpty shell zsh -f -i
zpty -w shell "PS1= PS2= LISTMAX=10000 COLUMNS=200 LINES=200; unsetopt prompt_cr; bindkey '^I' complete-word; fpath=($2 \$fpath)"
zpty -w shell "autoload -U compinit; compinit -u -d $2/dump; setopt auto_list no_list_beep no_auto_menu; print -r -- be''gun"
while zpty -r shell line && [[ $line != *begun* ]]; do :; done
zpty -w -n shell "vorn ${*[3,-1]}"$'\t'
sleep 1
zpty -w shell $'\x15'"print -r -- en''ded"
while zpty -r shell line; do print -r -- "$line"; [[ $line == *ended* ]] && break; done
"""


def output(*command):
    return subprocess.run(command, capture_output=True, encoding="utf-8", check=True, timeout=60).stdout


def options_in(text):
    return set(re.findall(r"(?<![\w-])--[a-z][a-z-]*", text))


def verbs():
    listed = output(VORN, "--help").split("Verbs:\n")[1].split("\n\n")[0]
    return re.findall(r"^  (\w+)", listed, re.MULTILINE)


def options_of(verb):
    lines = output(VORN, verb, "--help").split("Options:\n")[1].split("\n\n")[0]
    return {option for line in re.findall(r"^  ([-\w,]+)", lines, re.MULTILINE) for option in options_in(line)}


class Completions(unittest.TestCase):
    def expect(self, complete):
        self.assertEqual(set(re.findall(r"\w+", complete(""))) & set(verbs()), set(verbs()))
        for verb in verbs():
            with self.subTest(verb=verb):
                self.assertEqual(options_in(complete(verb, "--")), options_of(verb))

    def need(self, shell):
        if not shutil.which(shell):
            self.skipTest(f"{shell} is not here: its completion is left out")

    def test_each_verb_has_options(self):
        self.assertEqual(len(verbs()), 11)
        for verb in verbs():
            self.assertIn("--help", options_of(verb))
        self.assertLessEqual({"--references", "--best", "--no-cache"}, options_of("date"))

    def test_bash(self):
        self.expect(lambda *words: output("bash", "-c", BASH, "bash", PACKAGING, *words))

    def test_bash_takes_names_with_blanks_whole(self):
        with tempfile.TemporaryDirectory() as folder:
            for name in ["old beam.rwl", "old 'oak'.rwl"]:
                (pathlib.Path(folder) / name).touch()
            (pathlib.Path(folder) / "old sites").mkdir()

            def complete(*words):
                script = f"cd '{folder}'; " + BASH
                return sorted(output("bash", "-c", script, "bash", PACKAGING, *words).splitlines())

            self.assertEqual(complete("stats", "ol"), ["old 'oak'.rwl", "old beam.rwl", "old sites"])
            self.assertEqual(complete("date", "--references", "ol"), ["old sites"])
            self.assertEqual(complete("stats", "--careful", "=", ""), [""])

    def test_fish(self):
        self.need("fish")

        def complete(*words):
            lines = output("fish", "--no-config", "-c", FISH, PACKAGING, *words).splitlines()
            return "\n".join(line.split("\t")[0] for line in lines)

        self.expect(complete)
        self.assertEqual(complete("convert", "--to", "").split(), ["compact", "csv", "heidelberg", "noaa", "tucson", "xlsx"])
        self.assertNotIn("--gain", complete("stats", "--"))
        self.assertEqual(complete("stats", "--careful="), "")
        self.assertNotEqual(complete("stats", ""), "")

    def test_zsh(self):
        self.need("zsh")
        with tempfile.TemporaryDirectory() as folder:
            shutil.copy(PACKAGING / "vorn.zsh-completion", f"{folder}/_vorn")

            def complete(*words):
                shown = output("zsh", "-f", "-c", ZSH, "zsh", PACKAGING, folder, *words)
                # Without what moves the cursor, and without what the options mean.
                shown = re.sub(r"\x1b\[[0-9;?]*[A-Za-z]", "", shown)
                return re.sub(r" -- .*", "", shown)

            self.expect(complete)


unittest.main(argv=sys.argv[:1])
