"""The table of imports: which calls the library may take from which of the device's libraries."""

from dataclasses import dataclass
from pathlib import Path


@dataclass(frozen=True)
class Import:
    library: str
    name: str
    late: bool  # looked up on attach, not by the loader

    @property
    def slot(self) -> str:
        """The symbol of the word that holds the call's address."""
        return f"late_{self.name}" if self.late else f"iat_{self.name}"


class TableError(Exception):
    """The table can't be used; says where and why."""


def read_table(path: Path) -> list[Import]:
    """One import a line: library, name, and perhaps "late"; "#" begins a comment."""
    imports: dict[str, Import] = {}
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        words = line.partition("#")[0].split()
        if not words:
            continue
        if len(words) not in (2, 3) or words[2:] not in ([], ["late"]):
            raise TableError(f'{path}:{number}: expected "LIBRARY NAME [late]"')
        entry = Import(words[0], words[1], len(words) == 3)
        if entry.name in imports:
            raise TableError(f"{path}:{number}: {entry.name} stands twice")
        imports[entry.name] = entry
    return list(imports.values())
