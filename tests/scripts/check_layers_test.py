#!/usr/bin/env python3
"""Plants each kind of breach in a copy of the tree and expects scripts/check_layers to name it."""

import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
CHECK = PROJECT / "scripts" / "check_layers"


class CheckLayers(unittest.TestCase):
    def setUp(self):
        self.root = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.root)
        listed = subprocess.run(["git", "-C", PROJECT, "ls-files", "*.h", "*.cpp", "*.inc",
                                 "docs/architecture.md"],
                                check=True, capture_output=True, text=True).stdout.split()
        for path in listed:
            if (PROJECT / path).is_file():
                (self.root / path).parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(PROJECT / path, self.root / path)
        subprocess.run(["git", "-C", self.root, "init", "-q"], check=True)

    def plant(self, path, text):
        (self.root / path).parent.mkdir(parents=True, exist_ok=True)
        with open(self.root / path, "a", encoding="utf-8") as file:
            file.write(text)

    def check(self):
        run = subprocess.run([CHECK, self.root], capture_output=True, text=True)
        return run.returncode, run.stdout

    def assert_breach(self, *words):
        status, output = self.check()
        self.assertEqual(status, 1, output)
        for word in words:
            self.assertIn(word, output)

    def test_the_tree_as_it_is_has_no_breach(self):
        status, output = self.check()
        self.assertEqual(status, 0, output)

    def test_an_upward_include(self):
        self.plant("records/dates.cpp", '#include "app/main_window.h"\n')
        self.assert_breach('records/dates.cpp: "app/main_window.h" is not below records')

    def test_a_sideways_include_that_the_table_does_not_allow(self):
        self.plant("exchange/csv.h", '#include "window/window.h"\n')
        self.assert_breach('exchange/csv.h: "window/window.h" is not below exchange')

    def test_the_program_including_a_test(self):
        self.plant("app/help.cpp", '#include "tests/ui/ui_test.h"\n')
        self.assert_breach('app/help.cpp: "tests/ui/ui_test.h" is not below app')

    def test_a_circle_within_a_layer(self):
        self.plant("records/dates.h", '#include "records/collections.h"\n')
        self.assert_breach("circle: ", "records/collections.h -> records/dates.h")

    def test_a_folder_that_is_no_layer(self):
        self.plant("extra/thing.h", "#pragma once\n")
        self.assert_breach("extra/thing.h: its folder is no layer")

    def test_a_path_that_does_not_start_at_the_root(self):
        self.plant("records/dates.cpp", '#include "collections.h"\n')
        self.assert_breach('records/dates.cpp: "collections.h" is no path from the root')

    def test_a_document_that_lists_other_layers(self):
        document = self.root / "docs/architecture.md"
        text = document.read_text(encoding="utf-8")
        document.write_text(text.replace("\nrecords/ ", "\nrecord/ ", 1), encoding="utf-8")
        self.assert_breach("docs/architecture.md: lists")


if __name__ == "__main__":
    unittest.main()
