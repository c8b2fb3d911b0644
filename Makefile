# The two commands of the README:
#   make demo  - install what is missing, build both DLLs, run the demo host
#                under Wine and Xvfb, and save its screenshot
#   make test  - install what is missing, build, run every test
#   make format - rewrite every C/C++ file as .clang-format says
#   make soak  - the document editor under 10,000 random user actions
#                (make test runs a shorter run of the same seed)
#   make mutants - apply each fault of tests/mutants.txt in turn and say
#                which ones the tests catch (slow; not part of make test)
BUILD ?= $(CURDIR)/build
export BUILD

.PHONY: all deps build demo test soak bench mutants format clean

all: demo

deps:
	@scripts/install-deps.sh

build: deps
	@scripts/build.sh

demo: build
	@scripts/run-demo.sh

test: build
	@scripts/run-tests.sh

soak: build
	@KWE_SOAK_ACTIONS=10000 CTEST_ARGS="-R EditorSoak" scripts/run-tests.sh

bench: build
	@scripts/run-bench.sh

format: deps
	@scripts/check-format.sh --fix

mutants: deps
	@scripts/run-mutants.sh

clean:
	rm -rf $(BUILD)
