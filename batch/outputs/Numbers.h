#pragma once
// Numbers for other programs to read, under the name that this folder knows them by.

#include "input/ShortestText.h"
