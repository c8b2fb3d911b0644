// The clipboard fixture lives in support/: TextEdit's scrap tests share it.
#pragma once
#include "support/clipboard_fixture.h"
