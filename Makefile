# The front door. Behind it are CMake presets: dev, release, asan, m32.

PRESETS := release m32 asan
JOBS ?= $(shell nproc 2>/dev/null || echo 2)
# As it is written, whatever characters the path has.
override export MESH := $(value MESH)

.PHONY: help setup macos-headers build test coverage memcheck demo bench package \
    format clean

help:
	@echo "make demo      a mesh goes to another application and back; MESH=path.obj takes your own,"
	@echo "               APP=Blender takes the real Blender, with ten objects and a picture"
	@echo "make test      builds and runs the tests: 64-bit, 32-bit, and under sanitizers"
	@echo "make build     builds build/release/libVek.so and the tool build/release/bin/vek"
	@echo "make package   leaves a .deb in build/, on a Mac a .zip"
	@echo "make bench     measures, side by side with floors and peers"
	@echo "make coverage  shows how much of the library its tests run, a folder a line"
	@echo "make memcheck  runs the tests under valgrind, for an hour"
	@echo "make format    formats the sources"
	@echo "make clean     removes build/"

# What a target needs beside packages.txt is named at once, for who has to ask for it.
setup:
	@scripts/install-packages packages.txt $(PACKAGES)

# Without them the tests that build for the Mac are skipped.
macos-headers: setup
	@scripts/fetch-macos-headers build/macos-headers || \
	    echo "The tests that build for the Mac will be skipped."

build: setup
	@cmake --preset release -DVEK_TESTS=OFF >/dev/null
	@cmake --build --preset release -j $(JOBS)

test: PACKAGES = packages-test.txt $(if $(shell command -v npm),,packages-npm.txt)
test: setup macos-headers
	@for preset in $(PRESETS); do \
	    echo "== $$preset"; \
	    cmake --preset $$preset >/dev/null && \
	    cmake --build --preset $$preset -j $(JOBS) && \
	    ctest --preset $$preset -j $(JOBS) || exit 1; \
	done

APP ?= Example
DEMO_Example := demo/round_trip.lua
DEMO_Blender := demo/blender.lua
DEMO = $(or $(DEMO_$(APP)),$(error There is no demo of $(APP); APP is Example or Blender))

# HOME is one of the demo's own: what is installed into Blender, is not installed into the user's.
demo: PACKAGES = $(if $(filter Blender,$(APP)),packages-blender.txt)
demo: build
	@mkdir -p build/demo/home
	@HOME="$(CURDIR)/build/demo/home" PATH="$(CURDIR)/demo/stand-ins:$$PATH" \
	    scripts/private-view build/release/bin/vek run $(DEMO) \
	    --app build/release/apps/$(APP) --out "$(CURDIR)/build/demo" $${MESH:+--mesh "$$MESH"}

bench: PACKAGES = packages-bench.txt
bench: setup
	@cmake --preset bench >/dev/null
	@cmake --build --preset bench -j $(JOBS)
	@scripts/private-view bench/run build/bench

coverage: PACKAGES = packages-test.txt packages-coverage.txt
coverage: setup
	@cmake --preset coverage >/dev/null
	@cmake --build --preset coverage -j $(JOBS)
	@find build/coverage -name '*.gcda' -delete
	@ctest --preset coverage -j $(JOBS)
	@scripts/coverage-table build/coverage --missing

memcheck: PACKAGES = packages-test.txt packages-memcheck.txt
memcheck: setup
	@cmake --preset dev >/dev/null
	@cmake --build --preset dev -j $(JOBS)
	@scripts/memcheck build/dev

package: PACKAGE = package
ifeq ($(shell uname),Darwin)
# No headers of the platform serve both the 32-bit half and the tool: the halves are built apart.
FAMILIES = i386 x86_64
I386_LIBRARY = $(if $(filter i386,$(FAMILIES)),$(CURDIR)/build/macos-i386/libVek.dylib)
package: PACKAGE = macos-package
package: $(if $(I386_LIBRARY),package-i386)

.PHONY: package-i386
package-i386:
	@cmake --preset macos-i386 $(if $(I386_HEADERS),-DCMAKE_OSX_SYSROOT="$(I386_HEADERS)") >/dev/null || \
	    { echo "make package I386_HEADERS=FOLDER takes the headers for the 32-bit half from there;" \
	          "make package FAMILIES=x86_64 leaves that half out."; exit 2; }
	@cmake --build --preset macos-i386 -j $(JOBS) --target Vek
endif
package: setup
	@cmake --preset $(PACKAGE) -DVEK_I386_LIBRARY="$(I386_LIBRARY)" >/dev/null
	@cmake --build --preset $(PACKAGE) -j $(JOBS)
	@umask 022 && cd build && cpack --config $(PACKAGE)/CPackConfig.cmake | grep generated

format:
	@git ls-files '*.cpp' '*.h' | grep -v exports.def.h | xargs clang-format -i

clean:
	@rm -rf build
