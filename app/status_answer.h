// Tells a program that asks what the player does. Nothing is written unasked: flash memory is spared.
#pragma once

#include "platform/ce.h"

// `request`: the asker's number, which the answer bears. 0 and numbers of more than 32 bits are nobody's.
void AnswerStatusRequest(WPARAM request);
