"""The tags of the demo card's songs, byte by byte (id3.org: ID3v1, ID3v2.3), and a look into ASF headers."""

import struct

ASF_HEADER = bytes.fromhex("3026b2758e66cf11a6d900aa0062ce6c")
ASF_FILE_PROPERTIES = bytes.fromhex("a1dcab8c47a9cf118ee400c00c205365")
ASF_CONTENT_DESCRIPTION = bytes.fromhex("3326b2758e66cf11a6d900aa0062ce6c")
ASF_DATA = bytes.fromhex("3626b2758e66cf11a6d900aa0062ce6c")
ASF_LARGEST_OBJECT = 1024     # the player's reader stops at a larger one


def id3v1(title, artist, encoding):
    def field(text, size):
        data = text.encode(encoding)
        if len(data) > size:
            raise ValueError(f"{text}: longer than {size} bytes in {encoding}")
        return data.ljust(size, b"\0")

    return b"TAG" + field(title, 30) + field(artist, 30) + field("Cardsong", 30) + field("", 4) + field("", 30) + b"\x0c"


def id3v2(title, artist, lyrics=None):
    """A version 2.3 tag in UTF-16. The padding keeps byte-order marks away from where a search for frames begins."""
    def frame(name, text):
        data = b"\x01" + text.encode("utf-16-le").join((b"\xff\xfe", b"\0\0"))
        return name + struct.pack(">IH", len(data), 0) + data

    def unsynchronised_lyrics(text):  # with an empty description
        data = b"\x01eng" + b"\xff\xfe\0\0" + b"\xff\xfe" + text.encode("utf-16-le")
        return b"USLT" + struct.pack(">IH", len(data), 0) + data

    body = frame(b"TIT2", title) + frame(b"TPE1", artist) + frame(b"TALB", "Cardsong")
    if lyrics:
        body += unsynchronised_lyrics(lyrics)
    body += bytes(64)
    size = bytes(len(body) >> shift & 0x7F for shift in (21, 14, 7, 0))
    return b"ID3\x03\0\0" + size + body


def lyrics3(text):
    """A Lyrics3 v2.00 block of stamped ASCII text, for the place before an ID3v1 tag."""
    def field(name, data):
        return name + b"%05d" % len(data) + data

    block = b"LYRICSBEGIN" + field(b"IND", b"11") + field(b"LYR", text.encode("ascii"))
    return block + b"%06d" % len(block) + b"LYRICS200"


def asf_objects(data):
    """[(GUID, size)] of the header's objects, up to and with the Data Object."""
    if data[:16] != ASF_HEADER:
        raise ValueError("no ASF header")
    at, found = 30, []
    while at + 24 <= len(data):
        guid, size = data[at:at + 16], struct.unpack_from("<Q", data, at + 16)[0]
        found.append((guid, size))
        if guid == ASF_DATA:
            return found
        at += size
    raise ValueError("no ASF data object")


def check_asf(data):
    """Fails when the player's reader would stop before it has seen length and title."""
    wanted = {ASF_FILE_PROPERTIES, ASF_CONTENT_DESCRIPTION}
    for guid, size in asf_objects(data):
        wanted.discard(guid)
        if guid != ASF_DATA and size > ASF_LARGEST_OBJECT:
            raise ValueError(f"an ASF object of {size} bytes in the header")
    if wanted:
        raise ValueError("an ASF header without length or title")
