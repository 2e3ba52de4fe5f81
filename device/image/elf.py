"""Reads what the image writer needs of a linked 32-bit ARM program: its sections, symbols and kept relocations."""

import struct
from dataclasses import dataclass
from pathlib import Path

SHT_SYMTAB = 2
SHT_NOBITS = 8
SHT_REL = 9
SHF_ALLOC = 2
EM_ARM = 40
_HEADER = struct.Struct("<16sHHIIIIIHHHHHH")
_SECTION = struct.Struct("<IIIIIIIIII")
_SYMBOL = struct.Struct("<IIIBBH")
_RELOCATION = struct.Struct("<II")


class ElfError(Exception):
    """The file is not what the image writer takes."""


@dataclass(frozen=True)
class Section:
    name: str
    kind: int
    flags: int
    address: int
    data: bytes  # empty for sections without contents
    size: int
    link: int
    info: int

    @property
    def loaded(self) -> bool:
        return bool(self.flags & SHF_ALLOC)

    @property
    def end(self) -> int:
        return self.address + self.size


@dataclass(frozen=True)
class Symbol:
    name: str
    value: int
    section: int


@dataclass(frozen=True)
class Relocation:
    address: int
    kind: int


def _text_at(table: bytes, offset: int) -> str:
    return table[offset : table.index(b"\0", offset)].decode("utf-8")


class Program:
    def __init__(self, path: Path):
        self._bytes = path.read_bytes()
        header = _HEADER.unpack_from(self._bytes)
        if header[0][:6] != b"\x7fELF\x01\x01" or header[2] != EM_ARM:
            raise ElfError(f"{path}: no little-endian 32-bit ARM program")
        self.entry = header[4]
        self.sections = self._read_sections(table=header[6], count=header[12], names=header[13])
        self.symbols = self._read_symbols()
        self.relocations = self._read_relocations()

    def section(self, name: str) -> Section | None:
        return next((section for section in self.sections if section.name == name), None)

    def addresses(self, prefix: str) -> dict[str, int]:
        """The addresses of the symbols whose names begin so, by the rest of the name."""
        return {s.name.removeprefix(prefix): s.value for s in self.symbols if s.name.startswith(prefix) and s.section}

    def address(self, name: str) -> int:
        for symbol in self.symbols:
            if symbol.name == name and symbol.section:
                return symbol.value
        raise ElfError(f"no symbol {name}")

    def _read_sections(self, table: int, count: int, names: int) -> list[Section]:
        raw = [_SECTION.unpack_from(self._bytes, table + index * _SECTION.size) for index in range(count)]
        name_table = self._bytes[raw[names][4] : raw[names][4] + raw[names][5]]
        return [
            Section(
                name=_text_at(name_table, name),
                kind=kind,
                flags=flags,
                address=address,
                data=b"" if kind == SHT_NOBITS else self._bytes[offset : offset + size],
                size=size,
                link=link,
                info=info,
            )
            for name, kind, flags, address, offset, size, link, info, _, _ in raw
        ]

    def _read_symbols(self) -> list[Symbol]:
        table = next((section for section in self.sections if section.kind == SHT_SYMTAB), None)
        if table is None:
            raise ElfError("no symbol table")
        names = self.sections[table.link].data
        return [
            Symbol(_text_at(names, name), value, section)
            for name, value, _, _, _, section in _SYMBOL.iter_unpack(table.data)
        ]

    def _read_relocations(self) -> list[Relocation]:
        """Those of loaded sections; the linker keeps them when it is asked to."""
        return [
            Relocation(address, information & 0xFF)
            for section in self.sections
            if section.kind == SHT_REL and self.sections[section.info].loaded
            for address, information in _RELOCATION.iter_unpack(section.data)
        ]
