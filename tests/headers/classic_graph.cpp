// The same classic source, as a C++ program of the time would hold it.
#include "classic_graph.c"
