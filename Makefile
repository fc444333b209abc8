# The two commands a new machine needs: `make run` and `make test`.
BUILD      ?= build
ASAN_BUILD ?= build-asan
TSAN_BUILD ?= build-tsan
RELEASE_BUILD ?= build-release
JOBS       ?= $(shell nproc)
CMAKE_FLAGS ?=
DEMO       ?= data/demo/shur-daramad.srv

.PHONY: all deps configure build run test bench test-asan test-tsan fuzz release clean

all: build

deps:
	@scripts/install-deps

$(BUILD)/build.ninja: | deps
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS)

configure: $(BUILD)/build.ninja

build: deps configure
	cmake --build $(BUILD) -j $(JOBS)

run: build
	@if [ -n "$$DISPLAY$$WAYLAND_DISPLAY" ]; then \
	  $(BUILD)/src/ui/tahrir $(DEMO); \
	else \
	  echo "No display found: showing the demo score's lines instead of the window."; \
	  $(BUILD)/src/cli/tahrir-cli lines $(DEMO); \
	fi

test: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

bench: build
	@for b in $(BUILD)/bench/bench_*; do \
	  [ -f "$$b" ] && [ -x "$$b" ] || continue; \
	  echo "== $$b"; "$$b" || exit 1; \
	done

test-asan: deps
	cmake -S . -B $(ASAN_BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DTAHRIR_SANITIZE=ON $(CMAKE_FLAGS)
	cmake --build $(ASAN_BUILD) -j $(JOBS)
	cd $(ASAN_BUILD) && LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp:print_suppressions=0 \
	  ctest --output-on-failure -j $(JOBS)

# The player's tests (its dispatcher thread against the window's) under ThreadSanitizer.
test-tsan: deps
	cmake -S . -B $(TSAN_BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DTAHRIR_SANITIZE_THREAD=ON \
	  -DTAHRIR_BUILD_BENCH=OFF $(CMAKE_FLAGS)
	cmake --build $(TSAN_BUILD) -j $(JOBS) --target play_tests
	OMP_NUM_THREADS=1 TSAN_OPTIONS=halt_on_error=1:suppressions=$(CURDIR)/tests/tsan.supp \
	  $(TSAN_BUILD)/tests/play/play_tests

# Each libFuzzer target for FUZZ_SECONDS seconds, built with clang in its own folder.
FUZZ_SECONDS ?= 60
fuzz: deps
	FUZZ_SECONDS=$(FUZZ_SECONDS) JOBS=$(JOBS) scripts/run-fuzz

# What a packager builds: the Release configuration (-O3), every warning an error. Only
# built; the tests run in $(BUILD). With clang: make release RELEASE_CXX=clang++
# RELEASE_BUILD=build-release-clang
RELEASE_CXX ?=
release: deps
	$(if $(RELEASE_CXX),CXX=$(RELEASE_CXX)) cmake -S . -B $(RELEASE_BUILD) -G Ninja \
	  -DCMAKE_BUILD_TYPE=Release $(CMAKE_FLAGS)
	cmake --build $(RELEASE_BUILD) -j $(JOBS)

clean:
	rm -rf $(BUILD) $(ASAN_BUILD) $(TSAN_BUILD) $(RELEASE_BUILD)
