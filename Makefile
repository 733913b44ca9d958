# Thin targets over CMake presets and scripts/. See README.md.
.PHONY: help demo test test-native check bench fuzz build-fuzz dist reference clean threads native native-clang \
    native-release wine release fuzz-coverage native-tamrix show_dialog about_frames

JOBS ?= $(shell nproc)

help:
	@echo 'make demo         set up what is missing, build, and tour the library on real input'
	@echo 'make test         set up what is missing, build, and run every suite'
	@echo 'make test-native  the native suites; installs nothing'
	@echo 'make check        layout, lint, architecture, the share of tests, the shipped binaries, the package'
	@echo 'make dist         the package in dist/, tried with both compilers'
	@echo 'make bench        benchmarks         make fuzz   each fuzz target for a minute'
	@echo 'make reference    every function and class, from the headers'
	@echo 'make native | native-clang | native-release | wine | release   builds one preset'
	@echo 'make clean        removes build/ and dist/'

demo:
	scripts/demo

# Every suite: natively under sanitizers, under Wine on the real platform, and the shipped DLL.
test:
	scripts/run-tests

test-native: native
	ctest --test-dir build/native --output-on-failure --timeout 300

check:
	scripts/check

bench:
	scripts/bench

fuzz:
	scripts/fuzz

dist:
	scripts/dist

# From the headers, by doxygen; fails where something public has no comment.
reference:
	@mkdir -p build/reference
	doxygen docs/Doxyfile

build-fuzz:
	@mkdir -p build
	@cmake --preset fuzz >build/fuzz.log 2>&1 || { cat build/fuzz.log; exit 1; }
	@cmake --build build/fuzz -j $(JOBS)

native native-clang native-release wine release fuzz-coverage:
	@mkdir -p build
	@cmake --preset $@ >build/$@.log 2>&1 || { cat build/$@.log; exit 1; }
	@cmake --build build/$@ -j $(JOBS)

# One program of a preset.
one = cmake --preset $(1) >build/$(1).log 2>&1 || { cat build/$(1).log; exit 1; }; \
    cmake --build build/$(1) -j $(JOBS) --target $(2)

threads:
	@mkdir -p build
	@$(call one,threads,threads_soak)

native-tamrix:
	@mkdir -p build
	@$(call one,native,tamrix)

show_dialog about_frames:
	@mkdir -p build
	@$(call one,wine,$@)

clean:
	rm -rf build dist
