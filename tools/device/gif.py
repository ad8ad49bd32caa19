"""GIF files for the device's own decoder: a small writer, and a reader that refuses whatever the device refuses.

Pictures are lists of RGB565 words, top-down, width * height of them.
"""

import struct

KEY_COLOUR = 0xF81F          # 0xFF00FF: drawn as see-through
TABLE_SIZE = 4096            # the decoder fails on a stream that adds an entry beyond its table
ACCEPTED_EXTENSIONS = (0x01, 0xF9, 0xFE, 0xFF)


class GifError(Exception):
    pass


def to_565(red, green, blue):
    """The nearest RGB565 colour, not the cut-off one."""
    return (red * 31 + 127) // 255 << 11 | (green * 63 + 127) // 255 << 5 | (blue * 31 + 127) // 255


def to_888(word):
    red, green, blue = word >> 11, word >> 5 & 63, word & 31
    return (red << 3 | red >> 2, green << 2 | green >> 4, blue << 3 | blue >> 2)


class BitPacker:
    def __init__(self):
        self.data = bytearray()
        self.held, self.count = 0, 0

    def put(self, code, bits):
        self.held |= code << self.count
        self.count += bits
        while self.count >= 8:
            self.data.append(self.held & 255)
            self.held >>= 8
            self.count -= 8

    def finish(self):
        if self.count:
            self.data.append(self.held & 255)
        return bytes(self.data)


def compress(indices, minimum):
    """LZW codes of `indices`; clears the table before the reader's, one entry behind ours, would be full."""
    clear, end = 1 << minimum, (1 << minimum) + 1
    out = BitPacker()
    table, size, following = {}, minimum + 1, end + 1
    out.put(clear, size)
    current = indices[0]
    for index in indices[1:]:
        longer = table.get((current, index))
        if longer is not None:
            current = longer
            continue
        out.put(current, size)
        if following == TABLE_SIZE - 1:
            out.put(clear, size)
            table, size, following = {}, minimum + 1, end + 1
        else:
            table[current, index] = following
            following += 1
            if following > 1 << size:
                size += 1
        current = index
    out.put(current, size)
    # The reader adds an entry for that last code too, and may widen its codes before it meets the end.
    if following == 1 << size and size < 12:
        size += 1
    out.put(end, size)
    return out.finish()


def sub_blocks(data):
    blocks = b"".join(bytes([len(data[i:i + 255])]) + data[i:i + 255] for i in range(0, len(data), 255))
    return blocks + b"\0"


def image_block(left, top, width, height, indices, minimum):
    return struct.pack("<BHHHHBB", 0x2C, left, top, width, height, 0, minimum) + sub_blocks(compress(indices, minimum))


def changed_rectangle(before, after, width):
    rows = [i // width for i in range(len(after)) if before[i] != after[i]]
    columns = [i % width for i in range(len(after)) if before[i] != after[i]]
    if not rows:
        return 0, 0, 1, 1
    return min(columns), min(rows), max(columns) - min(columns) + 1, max(rows) - min(rows) + 1


def encode(frames, width, delay=None):
    """A GIF of one or more frames; those after the first hold only what changed. `delay` in hundredths of a second."""
    height = len(frames[0]) // width
    colours = sorted(set().union(*map(set, frames)))
    if len(colours) > 256:
        raise GifError(f"{len(colours)} colours, a GIF holds 256")
    minimum = max(2, (len(colours) - 1).bit_length())
    number = {colour: index for index, colour in enumerate(colours)}
    palette = b"".join(bytes(to_888(colour)) for colour in colours).ljust(3 << minimum, b"\0")

    out = [b"GIF89a", struct.pack("<HHBBB", width, height, 0xF0 | (minimum - 1), 0, 0), palette]
    if len(frames) > 1:
        out.append(b"\x21\xFF\x0BNETSCAPE2.0\x03\x01\x00\x00\x00")
    before = None
    for frame in frames:
        left, top, wide, high = (0, 0, width, height) if before is None else changed_rectangle(before, frame, width)
        if delay is not None:
            out.append(struct.pack("<BBBBHBB", 0x21, 0xF9, 4, 1 << 2, delay, 0, 0))
        part = [number[frame[y * width + x]] for y in range(top, top + high) for x in range(left, left + wide)]
        out.append(image_block(left, top, wide, high, part, minimum))
        before = frame
    out.append(b"\x3B")
    return b"".join(out)


class Cursor:
    def __init__(self, data):
        self.data, self.at = data, 0

    def take(self, count):
        if self.at + count > len(self.data):
            raise GifError("cut short")
        piece = self.data[self.at:self.at + count]
        self.at += count
        return piece

    def byte(self):
        return self.take(1)[0]

    def words(self, count):
        return struct.unpack(f"<{count}H", self.take(2 * count))

    def sub_blocks(self):
        data = bytearray()
        while length := self.byte():
            data += self.take(length)
        return bytes(data)


def expand(data, minimum, expected):
    """The colour indices of one image, under the device decoder's rules."""
    clear, end = 1 << minimum, (1 << minimum) + 1
    table, size, previous = {}, minimum + 1, None
    following, position, out = end + 1, 0, bytearray()
    while position + size <= len(data) * 8:
        first = position >> 3
        code = int.from_bytes(data[first:first + 4], "little") >> (position & 7) & ((1 << size) - 1)
        position += size
        if code == clear:
            table, size, following, previous = {}, minimum + 1, end + 1, None
            continue
        if previous is None:
            if code >= end:
                raise GifError("a run begins with a code at or above the end code")
            previous = bytes([code])
            out += previous
            continue
        if code == end:
            break
        text = bytes([code]) if code < clear else table.get(code)
        if text is None:
            text = previous + previous[:1]
        if len(out) + len(text) > expected:
            raise GifError("more pixels than the image holds")
        out += text
        if following >= TABLE_SIZE:
            raise GifError("a table entry beyond 4095")
        table[following] = previous + text[:1]
        following += 1
        if following == 1 << size and size < 12:
            size += 1
        previous = text
    if len(out) != expected:
        raise GifError(f"{len(out)} pixels where {expected} were promised")
    return out


def decode(data):
    """(width, height, frames) as the device shows them; raises GifError where its decoder would give up."""
    cursor = Cursor(data)
    if cursor.take(3) != b"GIF" or cursor.take(3) > b"89a":
        raise GifError("not a GIF of a known version")
    width, height = cursor.words(2)
    packed, background, _ = cursor.take(3)
    if not packed & 0x80:
        raise GifError("no global colour table")
    colours = [cursor.take(3) for _ in range(2 << (packed & 7))]
    palette = [red >> 3 << 11 | green >> 2 << 5 | blue >> 3 for red, green, blue in colours]
    canvas = [palette[background if background < len(palette) else 0]] * (width * height)
    frames = []
    while (kind := cursor.byte()) != 0x3B:
        if kind == 0x21:
            if cursor.byte() not in ACCEPTED_EXTENSIONS:
                raise GifError("an extension of unknown label")
            cursor.sub_blocks()
        elif kind == 0x2C:
            left, top, wide, high = cursor.words(4)
            if cursor.byte() & 0xC0 or left + wide > width or top + high > height:
                raise GifError("an image of a form that the skin does not use")
            minimum = cursor.byte()
            indices = expand(cursor.sub_blocks(), minimum, wide * high)
            for y in range(high):
                row = (top + y) * width + left
                canvas[row:row + wide] = [palette[i] for i in indices[y * wide:(y + 1) * wide]]
            frames.append(list(canvas))
        elif kind != 0:
            raise GifError(f"an unknown block {kind:#x}")
    if not frames:
        raise GifError("no image")
    return width, height, frames


def write_checked(path, frames, width, delay=None):
    """Writes the file only when the device's decoder would give back these very pixels."""
    data = encode(frames, width, delay)
    if decode(data) != (width, len(frames[0]) // width, [list(frame) for frame in frames]):
        raise GifError(f"{path}: reads back differently")
    with open(path, "wb") as file:
        file.write(data)
