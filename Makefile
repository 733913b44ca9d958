# Shortcuts for CMake presets and scripts/. See README.md.
.PHONY: help demo test test-native check bench fuzz build-fuzz dist reference clean threads native native-clang \
    native-release wine release fuzz-coverage native-tamrix press_button about_frames

JOBS ?= $(shell nproc)

help:
	@echo 'make demo         installs missing packages, builds, and demonstrates the library on sample data'
	@echo 'make test         installs missing packages, builds, and runs every test suite'
	@echo 'make test-native  runs the native test suites; installs nothing'
	@echo 'make check        checks formatting, lint, architecture, share of tests, shipped binaries and package'
	@echo 'make dist         builds the package in dist/ and tests it with both compilers'
	@echo 'make bench        runs the benchmarks'
	@echo 'make fuzz         runs each fuzz target for a minute'
	@echo 'make reference    generates the reference of all functions and classes from the headers'
	@echo 'make native | native-clang | native-release | wine | release   builds one preset'
	@echo 'make clean        removes build/ and dist/'

demo:
	scripts/demo

# Every suite: native ones with sanitizers, Windows suites and the shipped DLL under Wine.
test:
	scripts/run-tests

test-native: native
	ctest --preset native

check:
	scripts/check

bench:
	scripts/bench

fuzz:
	scripts/fuzz

dist:
	scripts/dist

# Generated from the headers by doxygen; fails if a public declaration has no comment.
reference:
	@mkdir -p build/reference
	doxygen docs/Doxyfile

build-fuzz:
	@mkdir -p build
	@cmake --preset fuzz >build/fuzz.log 2>&1 || { cat build/fuzz.log; exit 1; }
	@cmake --build --preset fuzz -j $(JOBS)

native native-clang native-release wine release fuzz-coverage:
	@mkdir -p build
	@cmake --preset $@ >build/$@.log 2>&1 || { cat build/$@.log; exit 1; }
	@cmake --build --preset $@ -j $(JOBS)

# Builds one program of a preset.
one = cmake --preset $(1) >build/$(1).log 2>&1 || { cat build/$(1).log; exit 1; }; \
    cmake --build --preset $(1) -j $(JOBS) --target $(2)

threads:
	@mkdir -p build
	@$(call one,threads,threads_soak)

native-tamrix:
	@mkdir -p build
	@$(call one,native,tamrix)

press_button about_frames:
	@mkdir -p build
	@$(call one,wine,$@)

clean:
	rm -rf build dist
