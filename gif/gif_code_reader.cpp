#include "gif/gif_code_reader.h"

GifCodeBits GifCodeReader::RefilledByBytes(GifCodeBits bits)
{
    while (bits.count < 56U) {
        if (bits.next == bits.end) {
            if (m_hasEnded)
                break;
            const auto block = m_reader.SubBlock();
            m_hasEnded = block.empty();
            bits.next = block.data();
            bits.end = block.data() + block.size();
            continue;
        }
        bits.held |= std::uint64_t{ std::to_integer<std::uint8_t>(*bits.next) } << bits.count;
        ++bits.next;
        bits.count += 8;
    }
    return bits;
}
