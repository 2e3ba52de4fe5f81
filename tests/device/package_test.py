"""Unpacks the device's cabinet with another author's program: package_test.py LIBRARY CABINET [unittest options]"""

import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path
from xml.etree import ElementTree

MAKE_CAB = Path(__file__).resolve().parents[2] / "device" / "package" / "make_cab.py"

LIBRARY: Path
CABINET: Path


class Unpacked(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def cabextract(self, cabinet: Path) -> int:
        command = ["cabextract", "-q", "-d", self.folder / "out", cabinet]
        return subprocess.run(command, capture_output=True, check=False).returncode

    def unpack(self) -> dict[str, bytes]:
        self.assertEqual(self.cabextract(CABINET), 0)
        return {path.name: path.read_bytes() for path in (self.folder / "out").iterdir()}

    def test_holds_the_library_and_what_the_installers_read(self):
        files = self.unpack()
        self.assertEqual(sorted(files), ["QORVAPIM.000", "QORVAPIM.001", "_setup.xml"])
        self.assertEqual(files["QORVAPIM.001"], LIBRARY.read_bytes())
        self.assertEqual(files["QORVAPIM.000"][:4], b"MSCE")
        self.assertEqual(struct.unpack_from("<I", files["QORVAPIM.000"], 8)[0], len(files["QORVAPIM.000"]))
        self.assertIn(LIBRARY.name.encode() + b"\0", files["QORVAPIM.000"])

    def test_the_document_names_the_library_as_it_is_called(self):
        document = ElementTree.fromstring(self.unpack()["_setup.xml"])
        self.assertIsNotNone(document.find(f".//*[@type='{LIBRARY.name}']//*[@value='QORVAPIM.001']"))

    def test_a_changed_byte_is_found_out(self):
        data = bytearray(CABINET.read_bytes())
        data[len(data) // 2] ^= 1
        copy = self.folder / "changed.cab"
        copy.write_bytes(data)
        self.assertNotEqual(self.cabextract(copy), 0)

    def make_cab(self, library: Path, cabinet: Path) -> subprocess.CompletedProcess:
        command = [sys.executable, MAKE_CAB, library, cabinet]
        return subprocess.run(command, capture_output=True, text=True, check=False)

    def test_packing_again_gives_the_same_bytes(self):
        again = self.folder / "again.cab"
        self.assertEqual(self.make_cab(LIBRARY, again).returncode, 0)
        self.assertEqual(again.read_bytes(), CABINET.read_bytes())

    def test_a_library_that_is_not_there_is_named_in_one_line(self):
        cabinet = self.folder / "none.cab"
        finished = self.make_cab(self.folder / "none.dll", cabinet)
        self.assertEqual(finished.returncode, 1)
        self.assertRegex(finished.stderr, r"\Amake_cab: [^\n]*none\.dll[^\n]*\n\Z")
        self.assertFalse(cabinet.exists())


if __name__ == "__main__":
    LIBRARY, CABINET = Path(sys.argv[1]), Path(sys.argv[2])
    unittest.main(argv=[sys.argv[0], *sys.argv[3:]])
