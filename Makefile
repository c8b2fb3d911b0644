# The two commands of the README:
#   make demo  - install what is missing, build both DLLs, run the demo host
#                under Wine and Xvfb, and save its screenshot
#   make test  - install what is missing, build, run every test
BUILD ?= $(CURDIR)/build
export BUILD

.PHONY: all deps build demo test bench clean

all: demo

deps:
	@scripts/install-deps.sh

build: deps
	@scripts/build.sh

demo: build
	@scripts/run-demo.sh

test: build
	@scripts/run-tests.sh

bench: build
	@scripts/run-bench.sh

clean:
	rm -rf $(BUILD)
