# The front door. It does no work of its own: scripts in tools/ and CMake presets do.
#   make run     install what is missing for it, build the program, and start it, or where there is no display show it
#                unattended (ARGS="..." are passed on)
#   make gpu     what lets the program compute on a graphics card; a quarter of an hour
#   make install, make uninstall   under PREFIX (~/.local)
#   make fuzz    every fuzzer for MINUTES (5)
#   make test    everything that the tests need, and every test; `make soak` with the full counts
SHELL := /bin/bash
.DEFAULT_GOAL := build
.PHONY: build gpu run test soak sanitizers mutants lint format fuzz bench package install uninstall clean

ARGS ?=
MINUTES ?= 5

build:
	@tools/install-dependencies build
	@tools/build release

gpu:
	@tools/install-dependencies gpu
	@tools/build-gpu

run:
	@tools/run $(ARGS)

test:
	@tools/install-dependencies test
	@tools/run-tests

soak:
	@tools/install-dependencies test
	@TULVANE_SOAK=1 tools/run-tests

sanitizers:
	@tools/install-dependencies test
	@tools/run-sanitizers

mutants:
	@tools/install-dependencies test
	@setsid --wait tools/at-idle tools/mutate

lint:
	@tools/install-dependencies test
	@tools/lint --all

format:
	@tools/install-dependencies test
	@tools/format

fuzz:
	@tools/install-dependencies test
	@tools/fuzz --minutes $(MINUTES)
	@tools/build --tests release
	@TULVANE_SOAK=1 ctest --test-dir build/release --output-on-failure -L fuzz

bench:
	@tools/install-dependencies bench
	@tools/run-benchmarks

package:
	@tools/install-dependencies package
	@tools/make-package

install:
	@tools/install-dependencies run
	@tools/install

uninstall:
	@tools/uninstall

clean:
	rm -rf build
