#!/usr/bin/env python3
"""The hex dumps of docs/formats are those of the samples that they name."""
import pathlib
import re
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
DUMP = re.compile(r"^```hexdump (\S+)\n(.*?)^```", re.MULTILINE | re.DOTALL)


class FormatPages(unittest.TestCase):
    def test_every_row_stands_in_its_sample(self):
        rows = 0
        for page in sorted((ROOT / "docs/formats").glob("*.md")):
            for name, dump in DUMP.findall(page.read_text(encoding="utf-8")):
                sample = (ROOT / name).read_bytes()
                for row in dump.splitlines():
                    offset, digits = row.split("  ", 1)
                    expected = bytes.fromhex(digits)
                    start = int(offset, 16)
                    self.assertEqual(sample[start:start + len(expected)], expected, f"{page.name}: {row}")
                    rows += 1
        self.assertGreaterEqual(rows, 50)


if __name__ == "__main__":
    unittest.main()
