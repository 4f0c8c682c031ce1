# Every task of the project by one word; `make help` lists them. What a task needs is installed by tools/setup.
FUZZ_SECONDS ?= 60
JOBS ?= $(shell nproc)

.DEFAULT_GOAL := help
.PHONY: help run build test bench fuzz lint check format samples install clean

help: ## this list
	@awk -F ':.*## ' '/^[a-z]+:.*## / { printf "make %-8s %s\n", $$1, $$2 }' $(MAKEFILE_LIST)

run: ## build, and open the program on a copy of the samples
	@tools/setup run
	@$(MAKE) --no-print-directory build
	@tools/run

build: ## both programs, optimised, in build/release
	@tools/setup build
	@cmake --preset release
	@cmake --build build/release -j $(JOBS) --target tallybook tallybook-pocket-desktop

test: ## build with sanitizers and run every test
	@tools/setup test
	@cmake --preset sanitize
	@cmake --build build/sanitize -j $(JOBS)
	@tools/run-tests build/sanitize

bench: ## measure, beside SQLite on the same table
	@tools/setup bench
	@cmake --preset bench
	@cmake --build build/bench -j $(JOBS)
	@tools/bench build/bench

fuzz: ## fuzz each reader, and use the windows at random, for FUZZ_SECONDS (60) each
	@tools/setup fuzz test
	@cmake --preset fuzz
	@cmake --build build/fuzz -j $(JOBS)
	@cmake --preset sanitize
	@cmake --build build/sanitize -j $(JOBS) --target random_use
	@tools/fuzz build/fuzz $(FUZZ_SECONDS) build/sanitize/tests/desktop/random_use

lint: ## formatting, static analysis and the wall between the rooms
	@tools/setup lint
	@cmake --preset sanitize
	@tools/lint build/sanitize

check: lint test ## all that a change must pass

format: ## lay out every source file as .clang-format says
	@tools/setup lint
	@git ls-files '*.h' '*.cpp' | xargs clang-format -i

samples: ## make the databases of samples/ again
	@tools/setup build
	@cmake --preset release
	@cmake --build build/release -j $(JOBS) --target samples

install: build ## into PREFIX (/usr/local); DESTDIR is put in front
	@cmake --install build/release $(if $(PREFIX),--prefix $(PREFIX))

clean: ## everything that was built
	@rm -rf build
