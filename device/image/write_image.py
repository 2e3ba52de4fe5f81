"""Turns the linked ARM program into the device's library: write_image.py PROGRAM IMPORTS VERSION OUTPUT"""

import struct
import sys
from pathlib import Path

import pe
from directories import LibraryImports, export_directory, import_directory
from elf import ElfError, Program, Section
from imports import Import, TableError, read_table
from relocations import absolute_words, base_relocations
from version_resource import VersionError, resource_section, version_info

# The export's name on the device, and the symbol that it leads to.
EXPORTS = {"rsCeApiMgr": "exportEntry"}


def _version(version: str) -> bytes:
    return version_info(
        version, {"FileDescription": "Synchronisation agent", "FileVersion": version, "ProductName": "Qorv"}
    )


def _joined(sections: list[Section]) -> tuple[int, bytes, int]:
    """Address, contents and size in memory of neighbours that become one section."""
    present = [section for section in sections if section.size]
    start, end = present[0].address, present[-1].end
    data = bytearray()
    for section in present:
        if section.data:
            data = data.ljust(section.address - start, b"\0") + section.data
    return start, bytes(data), end - start


def _named(program: Program, *names: str) -> list[Section]:
    return [section for name in names if (section := program.section(name)) is not None]


def _imported(program: Program, table: list[Import], base: int) -> list[LibraryImports]:
    """The imports that the linker kept, a library's together in the order of their slots."""
    kept = program.addresses("iat_")
    loaded = [entry for entry in table if not entry.late]
    unknown = kept.keys() - {entry.name for entry in loaded}
    if unknown:
        raise ElfError(f"slots that the table of imports does not know: {', '.join(sorted(unknown))}")
    result = []
    for library in sorted({entry.library for entry in loaded if entry.name in kept}):
        names = sorted((e.name for e in loaded if e.library == library and e.name in kept), key=kept.__getitem__)
        first = kept[names[0]]
        if [kept[name] for name in names] != [first + 4 * index for index in range(len(names))]:
            raise ElfError(f"the slots of {library} do not follow one another")
        result.append(LibraryImports(library, names, first - base))
    return result


def _with_words(data: bytes, words: dict[int, int]) -> bytes:
    patched = bytearray(data)
    for offset, word in words.items():
        struct.pack_into("<I", patched, offset, word)
    return bytes(patched)


def image(program: Program, table: list[Import], version: str, module: str) -> pe.PeImage:
    base = program.address("image_base")
    text = _joined(_named(program, ".text"))
    constants = _joined(_named(program, ".rdata", ".ARM.extab", ".ARM.exidx"))
    variables = _joined(_named(program, ".data", ".bss"))
    directory_at = pe.aligned(variables[0] + variables[2], pe.SECTION_ALIGNMENT) - base

    imports, slots = import_directory(directory_at, _imported(program, table, base))
    exports_at = directory_at + pe.aligned(len(imports), 4)
    exports = export_directory(
        exports_at, module, {name: program.address(symbol) - base for name, symbol in EXPORTS.items()}
    )
    directory = imports.ljust(exports_at - directory_at, b"\0") + exports
    places = [address - base for address in absolute_words(program, base, variables[0] + variables[2])]
    relocations = base_relocations(places)
    resources_at = pe.aligned(directory_at + len(directory), pe.SECTION_ALIGNMENT)
    resources = resource_section(resources_at, _version(version))
    relocations_at = pe.aligned(resources_at + len(resources), pe.SECTION_ALIGNMENT)

    variable_data = _with_words(variables[1], {place + base - variables[0]: word for place, word in slots.items()})
    return pe.PeImage(
        base=base,
        entry=program.entry - base,
        sections=[
            pe.PeSection(".text", text[0] - base, text[1], text[2], pe.CODE),
            pe.PeSection(".rdata", constants[0] - base, constants[1], constants[2], pe.READ_ONLY),
            pe.PeSection(".data", variables[0] - base, variable_data, variables[2], pe.WRITABLE),
            pe.PeSection(".idata", directory_at, directory, len(directory), pe.READ_ONLY),
            pe.PeSection(".rsrc", resources_at, resources, len(resources), pe.READ_ONLY),
            pe.PeSection(".reloc", relocations_at, relocations, len(relocations), pe.DISCARDABLE),
        ],
        directories={
            pe.DIRECTORY_EXPORT: (exports_at, len(exports)),
            pe.DIRECTORY_IMPORT: (directory_at, len(imports)),
            pe.DIRECTORY_RESOURCE: (resources_at, len(resources)),
            pe.DIRECTORY_BASE_RELOCATION: (relocations_at, len(relocations)),
        },
    )


def main(arguments: list[str]) -> int:
    if len(arguments) != 4:
        print(__doc__, file=sys.stderr)
        return 2
    program, table, version, output = Path(arguments[0]), Path(arguments[1]), arguments[2], Path(arguments[3])
    try:
        output.write_bytes(pe.write(image(Program(program), read_table(table), version, output.name)))
    except (OSError, ElfError, TableError, VersionError) as error:
        print(f"write_image: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
