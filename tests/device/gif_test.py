"""The skin's GIF writer, and the reader that stands guard over it."""

import pathlib
import random
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2] / "tools" / "device"))
import gif  # noqa: E402


def stream_of(codes, minimum):
    """An LZW stream of literal codes, each as wide as a reader expects it."""
    out, size, following, first = gif.BitPacker(), minimum + 1, (1 << minimum) + 2, True
    out.put(1 << minimum, size)
    for code in codes:
        out.put(code, size)
        if first:
            first = False
            continue
        following += 1
        if following == 1 << size and size < 12:
            size += 1
    return out.finish()


class GifTest(unittest.TestCase):
    def test_noise_that_fills_the_table_many_times_reads_back(self):
        noise = random.Random(7)
        for colours in (2, 3, 16, 17, 256):
            words = [gif.to_565(noise.randrange(0, 256), noise.randrange(0, 256), 8 * i & 255) for i in range(colours)]
            picture = [noise.choice(words) for _ in range(120 * 100)]
            self.assertEqual(gif.decode(gif.encode([picture], 120)), (120, 100, [picture]))

    def test_every_length_of_a_plain_picture_reads_back(self):
        for length in range(1, 600):
            picture = [0x1234] * length
            self.assertEqual(gif.decode(gif.encode([picture], length))[2], [picture])

    def test_animation_steps_that_hold_only_changes_read_back_whole(self):
        steps = [[1, 2, 3, 4, 5, 6], [1, 2, 3, 4, 9, 6], [1, 2, 3, 4, 9, 6], [7, 2, 3, 4, 9, 8]]
        self.assertEqual(gif.decode(gif.encode(steps, 3, delay=10)), (3, 2, steps))

    def test_an_entry_at_4096_is_refused(self):
        count = gif.TABLE_SIZE - 258 + 1                  # entries 258 to 4095 follow the first code
        codes = [i & 127 for i in range(count)]
        self.assertEqual(len(gif.expand(stream_of(codes, 8), 8, count)), count)
        with self.assertRaisesRegex(gif.GifError, "beyond 4095"):
            gif.expand(stream_of(codes + [5], 8), 8, count + 1)

    def test_a_run_that_begins_with_the_end_code_is_refused(self):
        out = gif.BitPacker()
        out.put(4, 3)
        out.put(5, 3)
        with self.assertRaisesRegex(gif.GifError, "begins with"):
            gif.expand(out.finish(), 2, 1)

    def test_too_many_and_too_few_pixels_are_refused(self):
        data = gif.compress([0, 1, 2, 3, 0, 1], 2)
        self.assertEqual(gif.expand(data, 2, 6), bytes([0, 1, 2, 3, 0, 1]))
        with self.assertRaisesRegex(gif.GifError, "more pixels"):
            gif.expand(data, 2, 5)
        with self.assertRaisesRegex(gif.GifError, "promised"):
            gif.expand(data, 2, 7)

    def test_an_unknown_extension_is_refused(self):
        data = gif.encode([[1]], 1)
        image = data.index(b"\x2c")
        self.assertEqual(gif.decode(data[:image] + b"\x21\xfe\x01x\x00" + data[image:])[2], [[1]])
        with self.assertRaisesRegex(gif.GifError, "unknown label"):
            gif.decode(data[:image] + b"\x21\xf0\x01x\x00" + data[image:])

    def test_more_than_256_colours_are_refused(self):
        with self.assertRaisesRegex(gif.GifError, "257 colours"):
            gif.encode([list(range(257))], 257)

    def test_every_565_colour_survives_its_palette_entry(self):
        for word in range(1 << 16):
            red, green, blue = gif.to_888(word)
            self.assertEqual(red >> 3 << 11 | green >> 2 << 5 | blue >> 3, word)
            self.assertEqual(gif.to_565(red, green, blue), word)


if __name__ == "__main__":
    unittest.main()
