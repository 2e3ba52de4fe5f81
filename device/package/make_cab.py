"""Makes the cabinet that installs the library on a device: make_cab.py LIBRARY CABINET"""

import sys
from pathlib import Path

import cabinet
from installation import Installation, header, setup_document


def short_name(file: str) -> str:
    """The first eight characters, as names in such a cabinet have."""
    return file.partition(".")[0][:8].upper()


def package(file: str, data: bytes) -> bytes:
    short = short_name(file)
    installation = Installation(
        name="Qorv",
        provider="Halvern",
        folder="%CE2%",  # where the remote call service finds a library by its name alone
        file=file,
        stored_as=f"{short}.001",
        lowest_version=(3, 0),  # as the library's own header says
        highest_version=(5, 99),
    )
    return cabinet.write(
        [
            cabinet.CabinetFile(f"{short}.000", header(installation)),
            cabinet.CabinetFile(installation.stored_as, data),
            cabinet.CabinetFile("_setup.xml", setup_document(installation)),
        ]
    )


def main(arguments: list[str]) -> int:
    if len(arguments) != 2:
        print(__doc__, file=sys.stderr)
        return 2
    library, target = (Path(argument) for argument in arguments)
    try:
        target.write_bytes(package(library.name, library.read_bytes()))
    except OSError as error:
        print(f"make_cab: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
