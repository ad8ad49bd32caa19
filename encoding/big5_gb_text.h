// Converts text between Big5 and GB2312, traditional characters to simplified ones and back. It guesses nothing.
#pragma once

// Each takes zero-terminated text and writes as many bytes as it has, then a zero: `destination` holds one byte more
// than the text. It may be `source` itself. With a null pointer nothing happens. Neither keeps any state.
//
// Bytes below 0xA1, and a lead byte without its trail byte, stay as they are; so do pairs whose lead byte no row of the
// set has (from 0xFA on in Big5, from 0xF8 on in GB2312). A pair without a counterpart becomes the white square. The
// lead bytes 0xAA to 0xAF, free in GB2312, are taken for 0xB0 to 0xB5.
extern "C" {

void Big5ToGb(const char* source, char* destination);
void GbToBig5(const char* source, char* destination);

} // extern "C"
