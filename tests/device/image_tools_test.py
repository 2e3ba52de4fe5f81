"""Tests of the programs that turn the linked ARM program into the device's library."""

import struct
import sys
import tempfile
import unittest
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "device" / "image"))

import pe  # noqa: E402
from directories import LibraryImports, export_directory, import_directory  # noqa: E402
from imports import Import, TableError, read_table  # noqa: E402
from make_thunks import thunks  # noqa: E402
from pe_reader import Image, ImageError  # noqa: E402
from relocations import base_relocations  # noqa: E402
from version_resource import VersionError, resource_section, version_info  # noqa: E402


class Folder(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def file(self, name: str, contents: str | bytes) -> Path:
        path = self.folder / name
        path.write_bytes(contents.encode() if isinstance(contents, str) else contents)
        return path


class ImportTable(Folder):
    def table(self, text: str) -> list[Import]:
        return read_table(self.file("imports.txt", text))

    def test_reads_library_name_and_lateness(self):
        table = self.table("# calls\ncoredll.dll Sleep\n\ncoredll.dll CeOidGetInfoEx2 late  # since 4.0\n")
        self.assertEqual(
            table, [Import("coredll.dll", "Sleep", False), Import("coredll.dll", "CeOidGetInfoEx2", True)]
        )

    def test_refuses_a_line_that_is_no_import_and_says_where(self):
        for line in ("coredll.dll", "coredll.dll Sleep soon", "coredll.dll Sleep late again"):
            with self.subTest(line), self.assertRaisesRegex(TableError, r"imports\.txt:2: expected"):
                self.table("# first\n" + line + "\n")

    def test_refuses_a_call_that_stands_twice(self):
        with self.assertRaisesRegex(TableError, ":2: Sleep stands twice"):
            self.table("coredll.dll Sleep\nother.dll Sleep\n")

    def test_gives_each_call_a_thunk_and_each_library_an_empty_last_slot(self):
        text = thunks(self.table("b.dll Two\na.dll One\na.dll Old late\n"))
        for line in ("ce_Two:", "iat_Two:", "ce_One:", "iat_One:", "ce_Old:", "late_Old:"):
            self.assertEqual(text.count(f"\n{line}\n"), 1, line)
        self.assertEqual([line for line in text.splitlines() if "~end" in line],
                         ['    .section .iat.a.dll.~end, "awR", %progbits', '    .section .iat.b.dll.~end, "awR", %progbits'])  # fmt: skip


class Directories(unittest.TestCase):
    def test_import_directory_by_hand(self):
        # One library with one call at 0x5000; its slot is at 0x4000. Two descriptors of 20 bytes (one empty), a lookup list
        # of two words at 0x5028, then the texts: hint 0, "Go", NUL, one byte to make it even (0x5030 to 0x5036), "x.dll", NUL.
        data, slots = import_directory(0x5000, [LibraryImports("x.dll", ["Go"], 0x4000)])
        expected = struct.pack("<5I", 0x5028, 0, 0, 0x5036, 0x4000) + bytes(20) + struct.pack("<2I", 0x5030, 0)
        self.assertEqual(data, expected + b"\0\0Go\0\0" + b"x.dll\0")
        self.assertEqual(slots, {0x4000: 0x5030})

    def test_export_directory_by_hand(self):
        # The header's 40 bytes, then one word each for function and name and two bytes for the ordinal: the texts begin at
        # 0x6000 + 40 + 4 + 4 + 2 = 0x6032.
        data = export_directory(0x6000, "m.dll", {"run": 0x1234})
        header = struct.pack("<IIHH7I", 0, 0, 0, 0, 0x6032, 1, 1, 1, 0x6028, 0x602C, 0x6030)
        self.assertEqual(data, header + struct.pack("<IIH", 0x1234, 0x6038, 0) + b"m.dll\0run\0")


class BaseRelocations(unittest.TestCase):
    def test_a_block_for_each_page_filled_to_four_bytes(self):
        # Kind 3 in the upper four bits, the place in the page in the lower twelve; the first page has an odd number.
        blocks = base_relocations([0x1004, 0x2FFC, 0x2000])
        first = struct.pack("<IIHH", 0x1000, 12, 0x3004, 0)
        second = struct.pack("<IIHH", 0x2000, 12, 0x3FFC, 0x3000)
        self.assertEqual(blocks, first + second)

    def test_nothing_for_no_words(self):
        self.assertEqual(base_relocations([]), b"")


class VersionResource(unittest.TestCase):
    def test_section_by_hand(self):
        # Three directories of 24 bytes with one entry each lead to one another, the last to the 16 bytes that say where the
        # resource is: at 0x7000 + 3 * 24 + 16 = 0x7058.
        head = struct.pack("<IIHHHH", 0, 0, 0, 0, 0, 1)
        expected = head + struct.pack("<II", 16, 0x80000018) + head + struct.pack("<II", 1, 0x80000030)
        expected += head + struct.pack("<II", 0x409, 0x48) + struct.pack("<IIII", 0x7058, 3, 0, 0)
        self.assertEqual(resource_section(0x7000, b"abc"), expected + b"abc")

    def test_version_by_hand(self):
        # Lengths: "Translation" 6 + 24 + 2 to fill + 4 = 36, its parent 6 + 24 + 2 + 36 = 68. The text 6 + 4 + 2 + 4 = 16
        # ("N" and "v" with their NULs), its table 6 + 18 + 16 = 40, that one's parent 6 + 30 + 40 = 76. In all
        # 6 + 32 + 2 + 52 + 76 + 68 = 236.
        def key(text: str) -> bytes:
            return (text + "\0").encode("utf-16-le")

        fixed = struct.pack("<IIHHHHHHHHIIIIIII", 0xFEEF04BD, 0x10000, 2, 1, 0, 3, 2, 1, 0, 3, 0x3F, 0, 4, 2, 0, 0, 0)
        expected = struct.pack("<HHH", 236, 52, 0) + key("VS_VERSION_INFO") + bytes(2) + fixed
        expected += struct.pack("<HHH", 76, 0, 1) + key("StringFileInfo")
        expected += struct.pack("<HHH", 40, 0, 1) + key("040904b0")
        expected += struct.pack("<HHH", 16, 2, 1) + key("N") + bytes(2) + key("v")
        expected += struct.pack("<HHH", 68, 0, 1) + key("VarFileInfo") + bytes(2)
        expected += struct.pack("<HHH", 36, 4, 0) + key("Translation") + bytes(2) + struct.pack("<HH", 0x409, 0x4B0)
        self.assertEqual(version_info("1.2.3", {"N": "v"}).hex(" "), expected.hex(" "))

    def test_refuses_what_is_no_version(self):
        for version in ("1.2", "1.2.3.4", "1.2.x", "1.2.-3", "1.2.65536", ""):
            with self.subTest(version), self.assertRaisesRegex(VersionError, "expected NUMBER.NUMBER.NUMBER"):
                version_info(version, {})


class Writer(Folder):
    def image(self) -> pe.PeImage:
        return pe.PeImage(
            base=0x10000000,
            entry=0x1000,
            sections=[
                pe.PeSection(".text", 0x1000, b"\x01\x02\x03\x04", 4, pe.CODE),
                pe.PeSection(".data", 0x2000, b"\x05", 0x1800, pe.WRITABLE),
                pe.PeSection(".bss", 0x4000, b"", 0x10, pe.WRITABLE),
            ],
        )

    def test_what_is_written_is_read_back(self):
        image = Image(self.file("x.dll", pe.write(self.image())))
        self.assertEqual(image.base, 0x10000000)
        self.assertEqual(len(image.loaded), 0x5000)
        self.assertEqual(image.word(0x1000), 0x04030201)
        self.assertEqual(image.word(0x2000), 5)
        self.assertEqual(image.exports(), {})

    def test_headers_are_those_of_windows_ce_on_arm(self):
        data = pe.write(self.image())
        header = struct.unpack_from("<I", data, 0x3C)[0]
        self.assertEqual(data[header : header + 4], b"PE\0\0")
        machine, sections, stamp = struct.unpack_from("<HHI", data, header + 4)
        self.assertEqual((machine, sections, stamp), (0x01C0, 3, 0))
        subsystem_version, subsystem = struct.unpack_from("<HH", data, header + 24 + 48), data[header + 24 + 68]
        self.assertEqual((subsystem_version, subsystem), ((3, 0), 9))

    def test_the_checksum_is_that_of_the_file(self):
        # Taken anew over the whole file as the field's definition says: 16-bit words with end-around carry, the field
        # itself as zero, plus the file's size.
        data = bytearray(pe.write(self.image()))
        field = struct.unpack_from("<I", data, 0x3C)[0] + 24 + 64
        stored = struct.unpack_from("<I", data, field)[0]
        data[field : field + 4] = bytes(4)
        total = sum(struct.unpack(f"<{len(data) // 2}H", data))
        self.assertEqual(stored, total % 0xFFFF + len(data))

    def test_the_same_image_gives_the_same_bytes(self):
        self.assertEqual(pe.write(self.image()), pe.write(self.image()))

    def test_what_is_no_image_is_refused(self):
        with self.assertRaises(ImageError):
            Image(self.file("x.dll", b"MZ".ljust(0x80, b"\0")))


if __name__ == "__main__":
    unittest.main()
