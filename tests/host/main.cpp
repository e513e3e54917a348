#include "host.h"

int main(int argc, char** argv) { return playHost(argc, argv); }
