"""What a device's installer is told: the binary header of all systems, and the document that newer ones read instead."""

import struct
from dataclasses import dataclass
from xml.etree import ElementTree

# The installer takes StrongARM programs on all ARM processors that came after it.
PROCESSOR_STRONGARM = 2577
WARN_IF_SKIPPED = 1

# signature, reserved, size, reserved, 1, processor, lowest and highest version and build, counts and places of the six
# tables (texts, folders, files, registry keys, registry values, links), places and lengths of name, provider and
# unsupported platforms, reserved
_HEADER = struct.Struct("<4s5I4III6H6I6H2H")


@dataclass(frozen=True)
class Installation:
    """One file that goes into one folder."""

    name: str
    provider: str
    folder: str  # may begin with a macro of the installer: %CE2% is the system's folder
    file: str  # its name on the device
    stored_as: str  # its name in the cabinet; the extension is its number, ".001"
    lowest_version: tuple[int, int]
    highest_version: tuple[int, int]
    # In the upper bits of the highest build newer systems look for screens that a program says it can do with.
    highest_build: int = 0xE0000000


def _text(text: str) -> bytes:
    return text.encode("ascii") + b"\0"


def header(installation: Installation) -> bytes:
    """The file ".000". Texts and folders have numbers from 1, a folder is a list of texts that 0 ends."""
    name, provider = _text(installation.name), _text(installation.provider)
    folder, file = _text(installation.folder), _text(installation.file)
    texts = struct.pack("<HH", 1, len(folder)) + folder
    folders = struct.pack("<HHHH", 1, 4, 1, 0)
    files = struct.pack("<HHHIH", 1, 1, 1, WARN_IF_SKIPPED, len(file)) + file

    name_at = _HEADER.size
    provider_at = name_at + len(name)
    texts_at = provider_at + len(provider)
    folders_at = texts_at + len(texts)
    files_at = folders_at + len(folders)
    end = files_at + len(files)
    return _HEADER.pack(
        b"MSCE", 0, end, 0, 1, PROCESSOR_STRONGARM,
        *installation.lowest_version, *installation.highest_version, 0, installation.highest_build,
        1, 1, 1, 0, 0, 0,
        texts_at, folders_at, files_at, end, end, end,
        name_at, len(name), provider_at, len(provider), 0, 0,
        0, 0,
    ) + name + provider + texts + folders + files  # fmt: skip


def _group(parent: ElementTree.Element, kind: str, **attributes: str) -> ElementTree.Element:
    return ElementTree.SubElement(parent, "characteristic", type=kind, **attributes)


def _value(parent: ElementTree.Element, name: str, value: object) -> None:
    ElementTree.SubElement(parent, "parm", name=name, value=str(value))


def setup_document(installation: Installation) -> bytes:
    """The file "_setup.xml"."""
    document = ElementTree.Element("wap-provisioningdoc")
    install = _group(document, "Install")
    _value(install, "InstallPhase", "install")
    _value(install, "OSVersionMin", "{}.{}".format(*installation.lowest_version))
    _value(install, "OSVersionMax", "{}.{}".format(*installation.highest_version))
    _value(install, "BuildNumberMin", 0)
    _value(install, "BuildNumberMax", installation.highest_build - (1 << 32))  # read as a signed number
    _value(install, "AppName", f"{installation.provider} {installation.name}")
    ElementTree.SubElement(install, "parm", name="InstallDir", value=installation.folder, translation="install")
    for name, count in (("Dirs", 1), ("Files", 1), ("RegKeys", 0), ("RegVals", 0), ("Shortcuts", 0)):
        _value(install, f"Num{name}", count)

    folder = _group(_group(document, "FileOperation"), installation.folder, translation="install")
    _group(folder, "MakeDir")
    extract = _group(_group(folder, installation.file, translation="install"), "Extract")
    _value(extract, "Source", installation.stored_as)
    ElementTree.SubElement(extract, "parm", name="WarnIfSkip")
    ElementTree.indent(document)
    return ElementTree.tostring(document, encoding="ascii", xml_declaration=False) + b"\n"
