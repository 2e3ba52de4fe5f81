"""The resource section: the version that the device's file explorer and other programs ask the library for."""

import struct

_RT_VERSION = 16
_ENGLISH_US = 0x0409
_UTF16 = 1200
_SUBDIRECTORY = 0x80000000

_SIGNATURE = 0xFEEF04BD
_STRUCTURE_VERSION = 0x10000
_FLAGS_MASK = 0x3F
_OS_WINDOWS32 = 4
_TYPE_LIBRARY = 2
_BINARY, _TEXT = 0, 1


class VersionError(Exception):
    """The version has another form than NUMBER.NUMBER.NUMBER."""


def numbers(version: str) -> tuple[int, int, int]:
    parts = version.split(".")
    if len(parts) != 3 or not all(part.isascii() and part.isdigit() and int(part) <= 0xFFFF for part in parts):
        raise VersionError(f"version {version!r}: expected NUMBER.NUMBER.NUMBER")
    return int(parts[0]), int(parts[1]), int(parts[2])


def _padded(data: bytes) -> bytes:
    return data + b"\0" * (-len(data) % 4)


def _utf16(text: str) -> bytes:
    return text.encode("utf-16-le") + b"\0\0"


def _block(key: str, kind: int, value: bytes = b"", children: list[bytes] | None = None) -> bytes:
    """Length, the value's length (in characters for text), kind, key; then value and children, each at a multiple of four."""
    value_length = len(value) // 2 if kind == _TEXT else len(value)
    body = _padded(bytes(6) + _utf16(key)) + value
    for child in children or []:
        body = _padded(body) + child
    return struct.pack("<HHH", len(body), value_length, kind) + body[6:]


def version_info(version: str, texts: dict[str, str]) -> bytes:
    major, minor, patch = numbers(version)
    high, low = major << 16 | minor, patch << 16
    fixed = struct.pack(
        "<13I", _SIGNATURE, _STRUCTURE_VERSION, high, low, high, low, _FLAGS_MASK, 0,
        _OS_WINDOWS32, _TYPE_LIBRARY, 0, 0, 0,  # no date, so that the same sources give the same bytes
    )  # fmt: skip
    strings = [_block(key, _TEXT, _utf16(text)) for key, text in texts.items()]
    table = _block(f"{_ENGLISH_US:04x}{_UTF16:04x}", _TEXT, children=strings)
    translation = _block("Translation", _BINARY, struct.pack("<HH", _ENGLISH_US, _UTF16))
    return _block(
        "VS_VERSION_INFO", _BINARY, fixed,
        [_block("StringFileInfo", _TEXT, children=[table]), _block("VarFileInfo", _TEXT, children=[translation])],
    )  # fmt: skip


def _directory(identifier: int, target: int) -> bytes:
    """A directory with one entry, named by a number."""
    return struct.pack("<IIHHHHII", 0, 0, 0, 0, 0, 1, identifier, target)


def resource_section(place: int, info: bytes) -> bytes:
    """The section for this place of the loaded image: by type, by number, by language, then the one resource."""
    size = len(_directory(0, 0))
    data_at = 3 * size + 16
    return (
        _directory(_RT_VERSION, _SUBDIRECTORY | size)
        + _directory(1, _SUBDIRECTORY | 2 * size)
        + _directory(_ENGLISH_US, 3 * size)
        + struct.pack("<IIII", place + data_at, len(info), 0, 0)
        + info
    )
