"""Shows the device library to readers of other authors: readers_test.py LIBRARY IMPORTS VERSION [unittest options]

What they must find is laid down here and in the table of imports, not taken from the programs that write the library."""

import json
import re
import struct
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

LIBRARY: Path
IMPORTS: Path
VERSION: str

# Name and flags: 0x20 code, 0x40 initialised data, 0x02000000 discardable; 0x20000000 execute, 0x40000000 read, 0x80000000 write.
SECTIONS = {
    ".text": 0x60000020,
    ".rdata": 0x40000040,
    ".data": 0xC0000040,
    ".idata": 0x40000040,
    ".rsrc": 0x40000040,
    ".reloc": 0x42000040,
}
# ARM, subsystem "Windows CE GUI" from version 3.0, an executable image (0x0002) of 32 bits (0x0100) that is a library
# (0x2000) without line numbers (0x0004) and local symbols (0x0008).
HEADERS = {
    "machine": 0x01C0,
    "flags": 0x210E,
    "subsystem": 9,
    "subsystem version": (3, 0),
    "stamp": 0,
}
EXPORTS = ["rsCeApiMgr"]

# Debian's pefile, which belongs to Debian's Python and not to any other that stands before it in the path.
PEFILE = """
import json, pefile, sys
pe = pefile.PE(sys.argv[1])
fixed = pe.VS_FIXEDFILEINFO[0]
texts = [table.entries for info in pe.FileInfo[0] if info.Key == b"StringFileInfo" for table in info.StringTable]
print(json.dumps({
    "warnings": pe.get_warnings(),
    "checksum": pe.verify_checksum(),
    "version": [fixed.FileVersionMS >> 16, fixed.FileVersionMS & 0xFFFF, fixed.FileVersionLS >> 16],
    "texts": {name.decode(): text.decode() for table in texts for name, text in table.items()},
}))
"""


class Disagreement(Exception):
    """A reader finds something else than what is meant."""


def run(*command: str | Path) -> str:
    finished = subprocess.run(command, capture_output=True, text=True, check=False)
    if finished.returncode or finished.stderr:
        raise Disagreement(f"{Path(command[0]).name}: {finished.stderr.strip() or finished.returncode}")
    return finished.stdout


def number(text: str) -> int:
    """The first number of "0x1c0 IMAGE_FILE_MACHINE_ARM" or of "IMAGE_FILE_MACHINE_ARM (0x1C0)"."""
    return int(re.search(r"0x[0-9A-Fa-f]+|\b\d+\b", text).group(), 0)


def as_list(value: object) -> list:
    return value if isinstance(value, list) else [value]


def pev(library: Path) -> dict:
    """What readpe finds."""
    found = json.loads(run("readpe", "-f", "json", library))
    file, optional = found["COFF/File header"], found["Optional/Image header"]
    directories = {
        name: number(place) for entry in as_list(found["Data directories"]) for name, place in entry.items()
    }
    return {
        "machine": number(file["Machine"]),
        "flags": number(file["Characteristics"]),
        "stamp": number(file["Date/time stamp"]),
        "subsystem": number(optional["Subsystem required"]),
        "subsystem version": (
            number(optional["Major version of subsystem"]), number(optional["Minor version of subsystem"])
        ),
        "entry": number(optional["Entrypoint"]),
        "size": number(optional["Size of image"]),
        "checksum": number(optional["Checksum"]),
        "sections": [
            (s["Name"], number(s["Characteristics"]), number(s["Virtual Address"]), number(s["Virtual Size"]))
            for s in found["Sections"]
        ],
        "imports": {
            (entry["Name"], function["Name"])
            for entry in found["Imported functions"] for function in entry["Functions"]
        },
        "exports": {f["Name"]: number(f["Address"]) for e in found["Exported functions"] for f in e["Functions"]},
        "relocations at": directories["IMAGE_DIRECTORY_ENTRY_BASERELOC"],
    }  # fmt: skip


def field(text: str, name: str) -> int:
    return number(re.search(rf"^ *{name}[: ] *(.*)$", text, re.MULTILINE).group(1))


def blocks(text: str, kind: str) -> list[str]:
    """The texts between "Kind {" and the closing brace of the same depth."""
    return re.findall(rf"^( *){kind} {{\n(.*?)^\1}}", text, re.MULTILINE | re.DOTALL)


def llvm(library: Path) -> dict:
    """What llvm-readobj finds."""
    headers = run("llvm-readobj", "--file-headers", library)
    sections = [body for _, body in blocks(run("llvm-readobj", "--sections", library), "Section")]
    imports = [body for _, body in blocks(run("llvm-readobj", "--coff-imports", library), "Import")]
    exports = [body for _, body in blocks(run("llvm-readobj", "--coff-exports", library), "Export")]
    name = re.compile(r"^ *Name: (\S+)", re.MULTILINE)
    return {
        "machine": field(headers, "Machine"),
        "flags": number(re.search(r"^  Characteristics \[ \((.*)\)", headers, re.MULTILINE).group(1)),
        "stamp": number(re.search(r"TimeDateStamp: .*\((.*)\)", headers).group(1)),
        "subsystem": number(re.search(r"Subsystem: .*\((.*)\)", headers).group(1)),
        "subsystem version": (field(headers, "MajorSubsystemVersion"), field(headers, "MinorSubsystemVersion")),
        "entry": field(headers, "AddressOfEntryPoint"),
        "size": field(headers, "SizeOfImage"),
        "sections": [
            (
                name.search(s).group(1),
                number(re.search(r"Characteristics \[ \((.*)\)", s).group(1)),
                field(s, "VirtualAddress"),
                field(s, "VirtualSize"),
            )
            for s in sections
        ],
        "imports": {
            (name.search(entry).group(1), symbol)
            for entry in imports for symbol in re.findall(r"Symbol: (\S+) \(0\)", entry)
        },
        "exports": {name.search(e).group(1): field(e, "RVA") for e in exports},
        "relocations at": field(headers, "BaseRelocationTableRVA"),
    }  # fmt: skip


def relocations(library: Path) -> list[tuple[str, int]]:
    """Kind and place of each, as llvm-readobj finds them."""
    listed = run("llvm-readobj", "--coff-basereloc", library)
    return [(kind, number(place)) for kind, place in re.findall(r"Type: (\S+)\n +Address: (\S+)", listed)]


def pefile(library: Path) -> dict:
    """What pefile finds: what it wonders at, whether the checksum is right, the version."""
    return json.loads(run("/usr/bin/python3", "-c", PEFILE, library))


def table(path: Path) -> set[tuple[str, str]]:
    """The calls that the loader may be asked for: library and name."""
    lines = (line.partition("#")[0].split() for line in path.read_text(encoding="utf-8").splitlines())
    return {(words[0], words[1]) for words in lines if len(words) == 2}


def differences(found: dict, allowed: set[tuple[str, str]]) -> list[str]:
    """What a reader found that is not as it is meant to be."""
    result = [f"{name} is {found[name]}" for name, meant in HEADERS.items() if found[name] != meant]
    flags = {name: flags for name, flags, _, _ in found["sections"]}
    places = {name: range(place, place + size) for name, _, place, size in found["sections"]}
    if flags != SECTIONS:
        result.append(f"sections are {flags}")
    elif found["entry"] not in places[".text"]:
        result.append(f"the entry {found['entry']:#x} is not in .text")
    elif not all(place in places[".text"] for place in found["exports"].values()):
        result.append("an export is not in .text")
    elif found["relocations at"] != places[".reloc"].start:
        result.append("the relocation directory is not the section .reloc")
    if list(found["exports"]) != EXPORTS:
        result.append(f"exports are {list(found['exports'])}")
    if not found["imports"] or found["imports"] - allowed:
        result.append(f"imports outside the table: {sorted(found['imports'] - allowed)}")
    return result


class Readers(unittest.TestCase):
    def setUp(self):
        self.allowed = table(IMPORTS)

    def test_readpe_finds_what_is_meant(self):
        self.assertEqual(differences(pev(LIBRARY), self.allowed), [])

    def test_llvm_readobj_finds_what_is_meant(self):
        self.assertEqual(differences(llvm(LIBRARY), self.allowed), [])

    def test_relocations_are_of_whole_words_in_the_loaded_image(self):
        # Kind "ABSOLUTE" fills a block up to four bytes and stands for nothing.
        size = llvm(LIBRARY)["size"]
        words = [(kind, place) for kind, place in relocations(LIBRARY) if kind != "ABSOLUTE"]
        self.assertGreater(len(words), 0)
        self.assertEqual([word for word in words if word[0] != "HIGHLOW" or not 0x1000 <= word[1] <= size - 4], [])

    def test_both_find_the_same(self):
        first, second = pev(LIBRARY), llvm(LIBRARY)
        for name in first.keys() & second.keys():
            self.assertEqual(first[name], second[name], name)

    def test_pefile_wonders_at_nothing_and_finds_version_and_checksum(self):
        self.assertEqual(
            pefile(LIBRARY),
            {
                "warnings": [],
                "checksum": True,
                "version": [int(part) for part in VERSION.split(".")],
                "texts": {"FileDescription": "Synchronisation agent", "FileVersion": VERSION, "ProductName": "Qorv"},
            },
        )

    def test_the_library_asks_for_what_it_can_t_do_without(self):
        # The one stream comes as an argument; the object model through COM, everything else from the core library.
        found = llvm(LIBRARY)["imports"]
        for call in (("ole32.dll", "CoCreateInstance"), ("coredll.dll", "CeSeekDatabase"), ("coredll.dll", "CreateFileW")):
            self.assertIn(call, found)


class Tampering(unittest.TestCase):
    """A file that differs in one place from what is meant is found out by both readers."""

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.copy = Path(folder.name) / LIBRARY.name
        self.data = bytearray(LIBRARY.read_bytes())
        self.header = struct.unpack_from("<I", self.data, 0x3C)[0]

    def assert_found_out(self, offset: int, new: bytes):
        self.assertNotEqual(self.data[offset : offset + len(new)], new)
        self.data[offset : offset + len(new)] = new
        self.copy.write_bytes(self.data)
        for reader in (pev, llvm):
            with self.subTest(reader.__name__):
                try:
                    found = differences(reader(self.copy), table(IMPORTS))
                except Disagreement as refusal:
                    found = [str(refusal)]
                self.assertNotEqual(found, [])

    def test_one_changed_byte_is_not_what_the_checksum_says(self):
        self.data[0x2000] ^= 1
        self.copy.write_bytes(self.data)
        self.assertFalse(pefile(self.copy)["checksum"])

    def test_another_processor(self):
        self.assert_found_out(self.header + 4, struct.pack("<H", 0x01C2))

    def test_a_program_instead_of_a_library(self):
        self.assert_found_out(self.header + 22, struct.pack("<H", 0x010E))

    def test_another_subsystem(self):
        self.assert_found_out(self.header + 24 + 68, struct.pack("<H", 2))

    def test_a_later_system(self):
        self.assert_found_out(self.header + 24 + 48, struct.pack("<H", 5))

    def test_an_entry_outside_the_code(self):
        self.assert_found_out(self.header + 24 + 16, struct.pack("<I", 0x40))

    def test_code_that_can_be_written(self):
        self.assert_found_out(self.header + 24 + 224 + 36, struct.pack("<I", 0xE0000020))

    def test_relocations_elsewhere(self):
        self.assert_found_out(self.header + 24 + 96 + 8 * 5, struct.pack("<I", 0x1000))

    def test_another_export(self):
        self.assert_found_out(self.data.index(b"rsCeApiMgr\0"), b"rsCeApiMGR")

    def test_a_call_that_no_device_has(self):
        self.assert_found_out(self.data.index(b"\0CoCreateInstance\0") + 1, b"CoCreateInstancE")


if __name__ == "__main__":
    LIBRARY, IMPORTS, VERSION = Path(sys.argv[1]), Path(sys.argv[2]), sys.argv[3]
    unittest.main(argv=[sys.argv[0], *sys.argv[4:]])
