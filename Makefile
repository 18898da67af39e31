# The front door. It does no work of its own: scripts in tools/ and CMake presets do.
#   make run     install what is missing, build, and start the program, or where there is no display show it unattended
#                (ARGS="..." are passed on)
#   make test    the same, and every test; `make soak` with the full counts
SHELL := /bin/bash
.DEFAULT_GOAL := build
.PHONY: build run test soak sanitizers lint format fuzz bench package dependencies clean

ARGS ?=

dependencies:
	@tools/install-dependencies

build: dependencies
	@tools/build release

run: build
	@tools/run-demo $(ARGS)

test: dependencies
	@tools/run-tests

soak: dependencies
	@TULVANE_SOAK=1 tools/run-tests

sanitizers: dependencies
	@tools/run-sanitizers

lint: dependencies
	@tools/lint --all

format: dependencies
	@tools/format

fuzz: dependencies
	@tools/build release
	@TULVANE_SOAK=1 ctest --test-dir build/release --output-on-failure -L fuzz

bench: dependencies
	@tools/run-benchmarks

package: dependencies
	@tools/make-package

clean:
	rm -rf build
