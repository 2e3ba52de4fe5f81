"""Writes a portable executable image for Windows CE on ARM."""

import struct
from dataclasses import dataclass, field

SECTION_ALIGNMENT = 0x1000
FILE_ALIGNMENT = 0x200

IMAGE_FILE_MACHINE_ARM = 0x01C0
IMAGE_SUBSYSTEM_WINDOWS_CE_GUI = 9
# EXECUTABLE_IMAGE, LINE_NUMS_STRIPPED, LOCAL_SYMS_STRIPPED, 32BIT_MACHINE, DLL
_CHARACTERISTICS = 0x0002 | 0x0004 | 0x0008 | 0x0100 | 0x2000

CODE = 0x60000020  # code, executable, readable
READ_ONLY = 0x40000040  # initialised data, readable
WRITABLE = 0xC0000040  # initialised data, readable, writable
DISCARDABLE = 0x42000040  # read-only, not needed once loaded

DIRECTORY_EXPORT = 0
DIRECTORY_IMPORT = 1
DIRECTORY_RESOURCE = 2
DIRECTORY_BASE_RELOCATION = 5
_DIRECTORIES = 16

_STUB = b"MZ".ljust(0x3C, b"\0") + struct.pack("<I", 0x40)
_FILE_HEADER = struct.Struct("<HHIIIHH")
_OPTIONAL_HEADER = struct.Struct("<HBBIIIIIIIIIHHHHHHIIIIHHIIIIII")
_SECTION_HEADER = struct.Struct("<8sIIIIIIHHI")
_CHECKSUM_OFFSET = len(_STUB) + 4 + _FILE_HEADER.size + 64


def aligned(value: int, alignment: int) -> int:
    return -(-value // alignment) * alignment


@dataclass(frozen=True)
class PeSection:
    name: str
    place: int  # relative to the image's base
    data: bytes
    size: int  # in memory; what lies past the data is zero
    flags: int


@dataclass
class PeImage:
    base: int
    entry: int  # relative to the base
    sections: list[PeSection]
    directories: dict[int, tuple[int, int]] = field(default_factory=dict)  # place and size


def _total(sections: list[PeSection], flag: int) -> int:
    return sum(aligned(len(section.data), FILE_ALIGNMENT) for section in sections if section.flags & flag)


def _optional_header(image: PeImage, header_size: int) -> bytes:
    code = next(section for section in image.sections if section.flags == CODE)
    data = next(section for section in image.sections if section.flags != CODE)
    last = image.sections[-1]
    return _OPTIONAL_HEADER.pack(
        0x10B, 0, 0,  # PE32; no linker version, so that the same sources give the same bytes
        _total(image.sections, 0x20), _total(image.sections, 0x40), 0,
        image.entry, code.place, data.place,
        image.base, SECTION_ALIGNMENT, FILE_ALIGNMENT,
        3, 0, 0, 0, 3, 0,  # system 3.0, no image version, subsystem 3.0: Windows CE 3.0 is the oldest
        0, aligned(last.place + last.size, SECTION_ALIGNMENT), header_size, 0,  # the checksum is filled in last
        IMAGE_SUBSYSTEM_WINDOWS_CE_GUI, 0,
        0x100000, 0x1000, 0x100000, 0x1000,  # stack and heap: a library's are not used
        0, _DIRECTORIES,
    )  # fmt: skip


def _section_headers(sections: list[PeSection], first_data: int) -> bytes:
    headers = bytearray()
    offset = first_data
    for section in sections:
        stored = aligned(len(section.data), FILE_ALIGNMENT)
        headers += _SECTION_HEADER.pack(
            section.name.encode("ascii"), section.size, section.place, stored, offset if stored else 0, 0, 0, 0, 0,
            section.flags,
        )  # fmt: skip
        offset += stored
    return bytes(headers)


def checksum(image: bytes) -> int:
    """The sum of the 16-bit words with the carries added back, plus the size; the checksum field counts as zero."""
    total = 0
    for offset in range(0, len(image), 2):
        if offset not in (_CHECKSUM_OFFSET, _CHECKSUM_OFFSET + 2):
            total += int.from_bytes(image[offset : offset + 2], "little")
    while total >> 16:
        total = (total & 0xFFFF) + (total >> 16)
    return total + len(image)


def write(image: PeImage) -> bytes:
    optional_size = _OPTIONAL_HEADER.size + 8 * _DIRECTORIES
    unaligned = len(_STUB) + 4 + _FILE_HEADER.size + optional_size + _SECTION_HEADER.size * len(image.sections)
    header_size = aligned(unaligned, FILE_ALIGNMENT)
    header = bytearray(_STUB + b"PE\0\0")
    header += _FILE_HEADER.pack(
        IMAGE_FILE_MACHINE_ARM, len(image.sections), 0, 0, 0, optional_size, _CHARACTERISTICS
    )
    header += _optional_header(image, header_size)
    for number in range(_DIRECTORIES):
        header += struct.pack("<II", *image.directories.get(number, (0, 0)))
    header += _section_headers(image.sections, header_size)
    result = bytearray(header.ljust(header_size, b"\0"))
    for section in image.sections:
        result += section.data.ljust(aligned(len(section.data), FILE_ALIGNMENT), b"\0")
    struct.pack_into("<I", result, _CHECKSUM_OFFSET, checksum(result))
    return bytes(result)
