#include "widgets/page.h" // its meta-object
