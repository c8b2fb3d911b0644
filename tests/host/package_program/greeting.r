#include "Types.r"

resource 'STR ' (128) {
	"Hello from the installed package"
};
