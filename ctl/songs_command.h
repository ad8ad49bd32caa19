// "cardsongctl songs": lists the songs of a folder.
#pragma once

#include "ctl/command.h"

extern const Command kSongsCommand;
