# A thin front over CMakePresets.json: each target sets up what it needs, configures, builds, runs.

JOBS ?= 2
MAKEFLAGS += --no-print-directory

.PHONY: help demo test dev asan tsan clang windows package docs bench format lint checks clean

help:
	@echo "make demo     build the library and the lmw tool, run the worked example"
	@echo "make test     build everything, run all tests"
	@echo "make dev      the same as a debug build"
	@echo "make asan     tests under the address and undefined-behaviour sanitizers"
	@echo "make tsan     tests under the thread sanitizer"
	@echo "make clang    tests of a Clang build"
	@echo "make windows  cross-build for 64-bit Windows, tests under Wine"
	@echo "make package  a Debian package of the library, tool, headers and examples, in build/release"
	@echo "make docs     the guide and the reference as HTML, in build/docs/html"
	@echo "make bench    build and run the benchmarks (BENCH=regex picks some)"
	@echo "make checks   formatting, include direction, exports, static analysis of the library"
	@echo "make lint     static analysis of the library and the tool (a quarter of an hour)"
	@echo "make clean    remove build/"

# $(call configure_and_build,<preset>)
define configure_and_build
	cmake --preset $(1) $(QUIET_CONFIGURE)
	cmake --build --preset $(1) --parallel $(JOBS)
endef
QUIET_CONFIGURE = --log-level=WARNING

demo:
	scripts/bootstrap build
	$(call configure_and_build,release)
	cmake --build --preset release --target demo

test:
	scripts/bootstrap build package
	$(call configure_and_build,release)
	ctest --preset release

dev:
	scripts/bootstrap build
	$(call configure_and_build,dev)
	ctest --preset dev

asan:
	scripts/bootstrap build
	$(call configure_and_build,asan-ubsan)
	ctest --preset asan-ubsan

tsan:
	scripts/bootstrap build
	$(call configure_and_build,tsan)
	ctest --preset tsan

clang:
	scripts/bootstrap build clang
	$(call configure_and_build,clang)
	ctest --preset clang

# The demonstration comes first: the one under Wine is compared with it.
windows: demo
	scripts/bootstrap build windows
	scripts/libzip-windows
	$(call configure_and_build,windows)
	ctest --preset windows

docs:
	scripts/bootstrap docs
	scripts/make-docs

package: docs
	scripts/bootstrap build package
	$(call configure_and_build,release)
	cd build/release && cpack -D "CPACK_INSTALLED_DIRECTORIES=$(CURDIR)/build/docs;usr/share/doc/loamworks-common"

bench:
	scripts/bootstrap build bench
	$(call configure_and_build,bench)
	scripts/run-benches build/bench $(BENCH)

format:
	scripts/bootstrap check
	scripts/check-format --fix

checks:
	scripts/bootstrap build check
	scripts/check-format
	scripts/check-includes
	scripts/check-portability
	cmake --preset release $(QUIET_CONFIGURE)
	scripts/check-tidy build/release
	cmake --build --preset release --parallel $(JOBS) --target lmwcommon
	scripts/check-exports build/release/bin/liblmwcommon.so

lint:
	scripts/bootstrap build check
	cmake --preset release $(QUIET_CONFIGURE)
	cmake --build --preset release --parallel $(JOBS) --target lmwcommon
	scripts/check-tidy build/release --tools

clean:
	rm -rf build
