// Holds the precompiled header of the standard library; it has no code of its own.
