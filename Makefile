# Two commands set everything up on a fresh Debian machine:
#   make run    install what is missing, build a Release build, start the game
#   make test   the same set-up, then the test suite, then again under ASan+UBSan
#   make package   a Debian package of a /usr install, checked by lintian
BUILD      ?= build
ASAN_BUILD ?= build-asan
JOBS       ?= $(shell nproc)
CMAKE_GEN  := -DCMAKE_BUILD_TYPE=Release

.PHONY: deps build build-sanitize run test test-release test-sanitize soak bench fuzz package clean

deps:
	@scripts/install-deps.sh

build: deps
	cmake -S . -B $(BUILD) $(CMAKE_GEN)
	cmake --build $(BUILD) -j $(JOBS)

run: build
	./$(BUILD)/talven

test: test-release test-sanitize

test-release: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS)

build-sanitize: deps
	cmake -S . -B $(ASAN_BUILD) -DCMAKE_BUILD_TYPE=Debug -DTALVEN_SANITIZE=ON -DTALVEN_BENCH=OFF
	cmake --build $(ASAN_BUILD) -j $(JOBS) --target talven talven_tests

test-sanitize: build-sanitize
	cd $(ASAN_BUILD) && ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 \
	  UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 \
	  ctest --output-on-failure -j $(JOBS)

# The soak and crash tests at length under ASan+UBSan: ten million random frames
# and 5,000 saves killed at random moments (make test runs 100,000 and 200).
SOAK_FRAMES ?= 10000000
CRASH_KILLS ?= 5000

soak: build-sanitize
	cd $(ASAN_BUILD) && ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 \
	  UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 \
	  TALVEN_SOAK_FRAMES=$(SOAK_FRAMES) TALVEN_CRASH_KILLS=$(CRASH_KILLS) SDL_VIDEODRIVER=dummy \
	  ./talven_tests --gtest_filter='Soak.*:Crash.*'

bench: build
	./$(BUILD)/talven_bench --benchmark_repetitions=5 --benchmark_report_aggregates_only=true

# Fuzz the save loader, then the demo reader, under ASan+UBSan with clang's libFuzzer
# for FUZZ_SECONDS each. New inputs and any crash go to FUZZ_CORPUS (the demo
# reader's to FUZZ_CORPUS-demo); the seeds stay in the build.
FUZZ_BUILD   ?= build-fuzz
FUZZ_CORPUS  ?= fuzz-corpus
FUZZ_SECONDS ?= 600

fuzz:
	@scripts/install-deps.sh clang libclang-rt-14-dev
	cmake -S . -B $(FUZZ_BUILD) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
	  -DTALVEN_FUZZ=ON -DTALVEN_BENCH=OFF
	cmake --build $(FUZZ_BUILD) -j $(JOBS) --target talven_fuzz_seeds
	mkdir -p $(FUZZ_CORPUS)
	UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 ./$(FUZZ_BUILD)/talven_fuzz_load \
	  -max_total_time=$(FUZZ_SECONDS) -max_len=82260 -print_final_stats=1 \
	  -artifact_prefix=$(FUZZ_CORPUS)/ $(FUZZ_CORPUS) $(FUZZ_BUILD)/fuzz-seeds
	mkdir -p $(FUZZ_CORPUS)-demo
	UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 ./$(FUZZ_BUILD)/talven_fuzz_demo \
	  -max_total_time=$(FUZZ_SECONDS) -max_len=131072 -print_final_stats=1 \
	  -artifact_prefix=$(FUZZ_CORPUS)-demo/ $(FUZZ_CORPUS)-demo $(FUZZ_BUILD)/fuzz-demo-seeds

# Built with Debian's own compiler and linker flags (all hardening on), installed
# under /usr, packed by CPack with the dependencies dpkg-shlibdeps finds (it needs
# dpkg-dev and file), then checked by lintian.
PKG_BUILD ?= build-pkg

package:
	@scripts/install-deps.sh dpkg-dev file lintian
	export DEB_BUILD_MAINT_OPTIONS=hardening=+all; \
	  cmake -S . -B $(PKG_BUILD) -DCMAKE_BUILD_TYPE=None -DCMAKE_INSTALL_PREFIX=/usr -DTALVEN_BENCH=OFF \
	  -DCMAKE_CXX_FLAGS="$$(dpkg-buildflags --get CXXFLAGS) $$(dpkg-buildflags --get CPPFLAGS)" \
	  -DCMAKE_EXE_LINKER_FLAGS="$$(dpkg-buildflags --get LDFLAGS)"
	cmake --build $(PKG_BUILD) -j $(JOBS) --target talven talven_install_files
	rm -f $(PKG_BUILD)/talven_*.deb
	cd $(PKG_BUILD) && cpack
	lintian --fail-on error,warning --info $(PKG_BUILD)/talven_*.deb

clean:
	rm -rf $(BUILD) $(ASAN_BUILD) $(FUZZ_BUILD) $(PKG_BUILD)
