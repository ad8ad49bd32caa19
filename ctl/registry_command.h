// "cardsongctl registry": reads, lists and writes values of the device's registry. A player need not run.
#pragma once

#include "ctl/command.h"

extern const Command kRegistryCommand;
