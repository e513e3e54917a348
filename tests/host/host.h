// A CAD, as far as the plug-in's library sees one: it loads the library and calls its entries.
#pragma once

#include "creo/entry.h"

// Starts a session in a folder of parts with the plug-in loaded, opens and saves each part as a person does, prints the
// message area and ends. words: the program, the plug-in's library, its text folder, the folder of parts (both in the
// system's own form), then names of parts. 0: done; 1: a part wasn't; 2: the plug-in isn't started.
extern "C" KVD_EXPORTED int playHost(int count, char** words);
