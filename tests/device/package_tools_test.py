"""Tests of the programs that pack the device's library for its installer."""

import struct
import sys
import unittest
from pathlib import Path
from xml.etree import ElementTree

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "device" / "package"))

import cabinet  # noqa: E402
from installation import Installation, header, setup_document  # noqa: E402
from make_cab import package, short_name  # noqa: E402

INSTALLATION = Installation(
    name="App",
    provider="Us",
    folder="%CE2%",
    file="long-name.dll",
    stored_as="LONG-NAM.001",
    lowest_version=(3, 0),
    highest_version=(5, 99),
    highest_build=7,
)


class Checksum(unittest.TestCase):
    def test_words_and_what_is_left_over(self):
        # 0x04030201 from the first four bytes; the rest counts from the highest byte down.
        self.assertEqual(cabinet.checksum(b"\x01\x02\x03\x04"), 0x04030201)
        self.assertEqual(cabinet.checksum(b"\x01\x02\x03\x04\x05"), 0x04030201 ^ 0x05)
        self.assertEqual(cabinet.checksum(b"\x01\x02\x03\x04\x05\x06"), 0x04030201 ^ 0x0506)
        self.assertEqual(cabinet.checksum(b"\x01\x02\x03\x04\x05\x06\x07"), 0x04030201 ^ 0x050607)

    def test_goes_on_from_a_seed(self):
        self.assertEqual(cabinet.checksum(b"\xff\0\0\0", 0x0F), 0xF0)


class Cabinet(unittest.TestCase):
    def test_by_hand(self):
        # Header 36 and folder 8 bytes: the files' entries begin at 44. Two of 16 bytes and a name of two: the block is at
        # 44 + 36 = 80 and takes 8 + 3 bytes, so 91 in all. Its checksum: 0x414243 for "ABC", and twice the length 3.
        data = cabinet.write([cabinet.CabinetFile("a", b"AB"), cabinet.CabinetFile("b", b"C")])
        expected = b"MSCF" + struct.pack("<5I", 0, 91, 0, 44, 0) + struct.pack("<BBHHHHH", 3, 1, 1, 2, 0, 0, 0)
        expected += struct.pack("<IHH", 80, 1, 0)
        expected += struct.pack("<IIHHHH", 2, 0, 0, 0x21, 0, 0x20) + b"a\0"
        expected += struct.pack("<IIHHHH", 1, 2, 0, 0x21, 0, 0x20) + b"b\0"
        expected += struct.pack("<IHH", 0x414243 ^ 0x00030003, 3, 3) + b"ABC"
        self.assertEqual(data.hex(" "), expected.hex(" "))

    def test_contents_are_cut_into_blocks_of_32_kilobytes(self):
        data = cabinet.write([cabinet.CabinetFile("a", bytes(0x8000) + b"x")])
        first, blocks, _ = struct.unpack_from("<IHH", data, 36)
        self.assertEqual(blocks, 2)
        self.assertEqual(struct.unpack_from("<HH", data, first + 4), (0x8000, 0x8000))
        self.assertEqual(struct.unpack_from("<HH", data, first + 8 + 0x8000 + 4), (1, 1))
        self.assertEqual(data[-1:], b"x")


class InstallerHeader(unittest.TestCase):
    def test_by_hand(self):
        # The tables follow the 100 bytes of the header and the two names of 4 and 3 bytes: texts at 107 (4 + 6 bytes),
        # folders at 117 (8), files at 125 (12 + 14); the end, 151, is where the three empty tables are.
        expected = b"MSCE" + struct.pack("<5I", 0, 151, 0, 1, 2577)
        expected += struct.pack("<6I", 3, 0, 5, 99, 0, 7)
        expected += struct.pack("<6H", 1, 1, 1, 0, 0, 0)
        expected += struct.pack("<6I", 107, 117, 125, 151, 151, 151)
        expected += struct.pack("<8H", 100, 4, 104, 3, 0, 0, 0, 0)
        expected += b"App\0Us\0"
        expected += struct.pack("<HH", 1, 6) + b"%CE2%\0"
        expected += struct.pack("<HHHH", 1, 4, 1, 0)
        expected += struct.pack("<HHHIH", 1, 1, 1, 1, 14) + b"long-name.dll\0"
        self.assertEqual(header(INSTALLATION).hex(" "), expected.hex(" "))


class SetupDocument(unittest.TestCase):
    def setUp(self):
        self.document = ElementTree.fromstring(setup_document(INSTALLATION))

    def test_says_what_the_header_says(self):
        values = {parm.get("name"): parm.get("value") for parm in self.document.iterfind("*[@type='Install']/parm")}
        for name, value in (
            ("OSVersionMin", "3.0"),
            ("OSVersionMax", "5.99"),
            ("BuildNumberMax", str(7 - 2**32)),
            ("AppName", "Us App"),
            ("InstallDir", "%CE2%"),
            ("NumFiles", "1"),
        ):
            self.assertEqual(values[name], value, name)

    def test_extracts_the_file_under_its_own_name(self):
        file = self.document.find("*[@type='FileOperation']/*[@type='%CE2%']/*[@type='long-name.dll']")
        self.assertEqual(file.find("*[@type='Extract']/*[@name='Source']").get("value"), "LONG-NAM.001")


class Package(unittest.TestCase):
    def test_names_in_the_cabinet_have_eight_characters(self):
        self.assertEqual(short_name("QORVAPIMGR.dll"), "QORVAPIM")
        self.assertEqual(short_name("agent.dll"), "AGENT")

    def test_the_same_library_gives_the_same_bytes(self):
        self.assertEqual(package("a.dll", b"abc"), package("a.dll", b"abc"))


if __name__ == "__main__":
    unittest.main()
