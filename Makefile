# Thin targets over CMake presets and scripts/. See README.md.
.PHONY: demo test test-native check bench fuzz build-fuzz dist reference clean native native-clang native-release wine release

JOBS ?= $(shell nproc)

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

native native-clang native-release wine release:
	@mkdir -p build
	@cmake --preset $@ >build/$@.log 2>&1 || { cat build/$@.log; exit 1; }
	@cmake --build build/$@ -j $(JOBS)

clean:
	rm -rf build dist
