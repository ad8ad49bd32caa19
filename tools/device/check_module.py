#!/usr/bin/env python3
"""Checks a resource-only module against its .rc source: every string is there under its id, and no other."""

import re
import struct
import sys

RT_STRING, IMAGE_DIRECTORY_RESOURCE = 6, 2
TABLE_ENTRY = re.compile(r'^\s+(\d+)\s+"((?:[^"\\]|\\.)*)"\s*$', re.M)


def source_strings(text):
    tables = re.findall(r"^STRINGTABLE\s*\nBEGIN\n(.*?)^END", text, re.M | re.S)
    return {int(number): value.replace("\\n", "\n") for table in tables for number, value in TABLE_ENTRY.findall(table)}


def resource_section(image):
    """(bytes of the section that holds the resources, its address)."""
    start = struct.unpack_from("<I", image, 0x3C)[0]
    if image[start:start + 4] != b"PE\0\0":
        raise ValueError("not a PE image")
    sections, optional_size = struct.unpack_from("<H", image, start + 6)[0], struct.unpack_from("<H", image, start + 20)[0]
    optional = start + 24
    directories = optional + (112 if struct.unpack_from("<H", image, optional)[0] == 0x20B else 96)
    wanted = struct.unpack_from("<I", image, directories + 8 * IMAGE_DIRECTORY_RESOURCE)[0]
    for number in range(sections):
        header = optional + optional_size + 40 * number
        size, address, raw_size, raw = struct.unpack_from("<IIII", image, header + 8)
        if address <= wanted < address + max(size, raw_size):
            return image[raw:raw + raw_size], address
    raise ValueError("no resources")


def entries(section, offset):
    named, numbered = struct.unpack_from("<HH", section, offset + 12)
    for i in range(named + numbered):
        yield struct.unpack_from("<II", section, offset + 16 + 8 * i)


def module_strings(image):
    section, address = resource_section(image)
    found = {}
    for kind, names in entries(section, 0):
        if kind != RT_STRING:
            continue
        for block, languages in entries(section, names & 0x7FFFFFFF):
            for _, leaf in entries(section, languages & 0x7FFFFFFF):
                at = struct.unpack_from("<I", section, leaf)[0] - address
                for index in range(16):
                    length = struct.unpack_from("<H", section, at)[0]
                    if length:
                        found[(block - 1) * 16 + index] = section[at + 2:at + 2 + 2 * length].decode("utf-16-le")
                    at += 2 + 2 * length
    return found


def main():
    source, module = sys.argv[1:]
    with open(source, encoding="utf-8") as file:
        wanted = source_strings(file.read())
    with open(module, "rb") as file:
        found = module_strings(file.read())
    if not wanted or wanted != found:
        sys.exit(f"{module}: holds {found}, where {source} has {wanted}")


if __name__ == "__main__":
    main()
