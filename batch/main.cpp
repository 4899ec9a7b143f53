/// kestrel_batch: the models of the program without a window; CSV on standard output or to a file.
#include "batch/execution.h"

int main(int argc, char** argv) { return execute(argc, argv); }
