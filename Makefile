# Two entry points for a fresh Debian 12 machine (run as root): `make demo` and `make test`.
# Both install what is missing from Debian's packages, configure, build and run.

PACKAGES := cmake ninja-build g++ pkg-config libsigc++-2.0-dev libxml++2.6-dev libcairomm-1.0-dev \
            libgtest-dev libgmock-dev libbenchmark-dev xsltproc libgtkmm-3.0-dev xvfb xauth fonts-dejavu-core
JOBS     ?= $(shell nproc 2>/dev/null || echo 2)
BUILD    ?= build

# The one clang-format the sources are checked with.
CLANG_FORMAT := clang-format-14

.PHONY: all deps configure build demo test test-asan test-tsan format-deps format format-check bench fuzz fuzz-smoke install \
        clean

all: build

deps:
	@missing=""; \
	for p in $(PACKAGES); do \
	    dpkg-query -W -f='$${Status}' $$p 2>/dev/null | grep -q "ok installed" || missing="$$missing $$p"; \
	done; \
	if [ -n "$$missing" ]; then \
	    echo "Installing:$$missing"; \
	    SUDO=""; [ "$$(id -u)" -ne 0 ] && SUDO=sudo; \
	    $$SUDO apt-get update -q && DEBIAN_FRONTEND=noninteractive $$SUDO apt-get install -y -q --no-install-recommends $$missing; \
	fi

configure: deps
	@[ -f $(BUILD)/build.ninja ] || cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo

build: configure
	cmake --build $(BUILD) -j $(JOBS)

# The sample project on the simulated test set: a copy of demo/data/sample-project.xml is run, saved and reported
# in $(BUILD)/demo-out. Exit code 1 of the runner only says that some test failed, which the sample may show.
DEMO_OUT := $(BUILD)/demo-out
demo: build
	@mkdir -p $(DEMO_OUT)
	cp demo/data/sample-project.xml $(DEMO_OUT)/project.xml
	./$(BUILD)/demo/zemtree-run --templates demo/data --report $(DEMO_OUT)/report $(DEMO_OUT)/project.xml \
	    || [ $$? -eq 1 ]

test: build
	ctest --test-dir $(BUILD) --output-on-failure -j $(JOBS)

# The whole suite under AddressSanitizer and UndefinedBehaviorSanitizer.
test-asan: deps
	@[ -f build-asan/build.ninja ] || cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug \
	    -DZTR_SANITIZE=address -DZTR_BUILD_BENCH=OFF
	cmake --build build-asan -j $(JOBS)
	ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 LSAN_OPTIONS=suppressions=$(CURDIR)/cmake/lsan.supp:print_suppressions=0 \
	    ctest --test-dir build-asan --output-on-failure -j $(JOBS)

# Every benchmark in a Release build, then the table the README keeps.
bench: deps
	@[ -f build-bench/build.ninja ] || cmake -S . -B build-bench -G Ninja -DCMAKE_BUILD_TYPE=Release \
	    -DZTR_BUILD_TESTS=OFF -DZTR_BUILD_DEMO=OFF
	cmake --build build-bench -j $(JOBS) --target zemtree-bench
	./build-bench/bench/zemtree-bench --benchmark_out=build-bench/bench.txt --benchmark_out_format=console
	@echo; cmake/bench-table.sh build-bench/bench.txt

# The threaded tests under ThreadSanitizer.
test-tsan: deps
	@[ -f build-tsan/build.ninja ] || cmake -S . -B build-tsan -G Ninja -DCMAKE_BUILD_TYPE=Debug \
	    -DZTR_SANITIZE=thread -DZTR_BUILD_BENCH=OFF
	cmake --build build-tsan -j $(JOBS)
	TSAN_OPTIONS="halt_on_error=1 second_deadlock_stack=1 suppressions=$(CURDIR)/cmake/tsan.supp" \
	    ctest --test-dir build-tsan --output-on-failure -j $(JOBS) -R 'Queue|Thread|AutoResetEvent|Evaluat|Device|Relay|Runner|UpdateView'

# The sources as the pinned clang-format writes them (.clang-format); format-check changes nothing and fails on drift.
format-deps:
	@command -v $(CLANG_FORMAT) > /dev/null || { apt-get update -q && \
	    DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends $(CLANG_FORMAT); }

format: format-deps
	git ls-files '*.h' '*.cpp' | xargs $(CLANG_FORMAT) -i

format-check: format-deps
	git ls-files '*.h' '*.cpp' | xargs $(CLANG_FORMAT) --dry-run --Werror

# libFuzzer targets of fuzz/, built with clang under ASan and UBSan.
FUZZ_SECONDS ?= 60
fuzz: deps
	@for p in clang libclang-rt-14-dev; do \
	    dpkg-query -W -f='$${Status}' $$p 2>/dev/null | grep -q "ok installed" || missing="$$missing $$p"; \
	done; \
	if [ -n "$$missing" ]; then apt-get update -q && DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends $$missing; fi
	@[ -f build-fuzz/build.ninja ] || CC=clang CXX=clang++ cmake -S fuzz -B build-fuzz -G Ninja -DZTR_FUZZ_SECONDS=$(FUZZ_SECONDS)
	cmake --build build-fuzz -j $(JOBS)

# Each fuzz target over its seeds, then for FUZZ_SECONDS seconds of new inputs (one after the other).
fuzz-smoke: fuzz
	cmake -S fuzz -B build-fuzz -DZTR_FUZZ_SECONDS=$(FUZZ_SECONDS) > /dev/null
	ctest --test-dir build-fuzz --output-on-failure

install: build
	cmake --install $(BUILD)

clean:
	rm -rf $(BUILD) build-asan build-tsan build-bench build-fuzz
