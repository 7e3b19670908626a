"""Reads what the checks need of a program or object file for a Mac."""
import dataclasses
import struct

FAT, THIN = 0xCAFEBABE, 0xFEEDFACF
PROCESSORS = {0x0100000C: "arm64", 0x01000007: "x86_64"}
PLATFORMS = {1: "macos"}
DYLIBS = {0x0C, 0x80000018, 0x8000001F}  # load commands that name a library: plain, weak, re-exported


@dataclasses.dataclass
class Image:
    """What is in a file for one processor."""
    processor: str
    kind: int  # 1: object file, 2: program
    libraries: list = dataclasses.field(default_factory=list)
    rpaths: list = dataclasses.field(default_factory=list)
    platform: str = ""
    minimum: tuple = ()
    signed: bool = False
    position_independent: bool = False
    undefined: list = dataclasses.field(default_factory=list)  # (name, library or None)
    defined: set = dataclasses.field(default_factory=set)
    sections: dict = dataclasses.field(default_factory=dict)  # name -> bytes


def version(number):
    return number >> 16, number >> 8 & 0xFF


def text_at(data, offset):
    return data[offset:data.index(b"\0", offset)].decode("utf-8")


def read_image(data):
    _, processor, _, kind, count, _, flags, _ = struct.unpack_from("<8I", data)
    image = Image(PROCESSORS.get(processor, hex(processor)), kind, position_independent=bool(flags & 0x200000))
    offset, table = 32, None
    for _ in range(count):
        command, size = struct.unpack_from("<2I", data, offset)
        if command in DYLIBS:
            image.libraries.append(text_at(data, offset + struct.unpack_from("<I", data, offset + 8)[0]))
        elif command == 0x8000001C:
            image.rpaths.append(text_at(data, offset + struct.unpack_from("<I", data, offset + 8)[0]))
        elif command == 0x32:
            platform, minimum = struct.unpack_from("<2I", data, offset + 8)
            image.platform, image.minimum = PLATFORMS.get(platform, str(platform)), version(minimum)
        elif command == 0x1D:
            image.signed = True
        elif command == 0x02:
            table = struct.unpack_from("<4I", data, offset + 8)
        elif command == 0x19:
            for index in range(struct.unpack_from("<I", data, offset + 64)[0]):
                read_section(image, data, offset + 72 + 80 * index)
        offset += size
    if table:
        read_symbols(image, data, *table)
    return image


def read_section(image, data, offset):
    name = data[offset:offset + 16].rstrip(b"\0").decode()
    size, start = struct.unpack_from("<QI", data, offset + 40)
    if start:
        image.sections[name] = data[start:start + size]


def read_symbols(image, data, start, count, names, _):
    for index in range(count):
        name, kind, _, description, _ = struct.unpack_from("<IBBHQ", data, start + 16 * index)
        if kind & 0xE0 or not kind & 0x01:
            continue  # for debuggers, or not for others
        if kind & 0x0E == 0:
            ordinal = description >> 8
            library = image.libraries[ordinal - 1] if 0 < ordinal <= len(image.libraries) else None
            image.undefined.append((text_at(data, names + name), library))
        else:
            image.defined.add(text_at(data, names + name))


def read(path):
    """The images in a file; empty when it is of another kind."""
    data = path.read_bytes()
    if len(data) < 32:
        return []
    if struct.unpack_from(">I", data)[0] == FAT:
        parts = [struct.unpack_from(">5I", data, 8 + 20 * index) for index in range(struct.unpack_from(">I", data, 4)[0])]
        return [read_image(data[start:start + size]) for _, _, start, size, _ in parts]
    return [read_image(data)] if struct.unpack_from("<I", data)[0] == THIN else []


def strings(image, section):
    return {text.decode("utf-8") for text in image.sections.get(section, b"").split(b"\0") if text}
