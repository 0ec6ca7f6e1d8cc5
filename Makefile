# Everyday commands. Each installs missing Debian packages first (a no-op when all are there).
RELEASE_DIR := build/release
DEBUG_DIR   := build/debug
JOBS        ?= $(shell nproc)

.PHONY: deps build run test package bench clean

deps:
	@bash scripts/install-deps.sh

build: deps
	cmake -S . -B $(RELEASE_DIR) -G Ninja -DCMAKE_BUILD_TYPE=Release -DHUSHPANE_TESTS=OFF
	cmake --build $(RELEASE_DIR) -j $(JOBS)

# make run             the demo recording
# make run FILE=talk.m4a
run: build
	@bash scripts/run.sh $(RELEASE_DIR)/hushpane $(FILE)

# Debug build with AddressSanitizer and UndefinedBehaviorSanitizer, then every test.
test: deps
	cmake -S . -B $(DEBUG_DIR) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DHUSHPANE_SANITIZE=ON
	cmake --build $(DEBUG_DIR) -j $(JOBS)
	cd $(DEBUG_DIR) && ctest --output-on-failure -j $(JOBS)

# The Debian package of the Release tree: build/release/hushpane_<version>_<arch>.deb
package: build
	cd $(RELEASE_DIR) && cpack -G DEB

# Benchmarks against the ffmpeg command-line tool, printed as ratios. The first run makes
# the fixtures (several minutes); the frame-accurate export comparison takes several more.
bench: deps
	bash bench/analysis.sh
	cmake --build build/bench --target hushpane_bench_export -j $(JOBS)
	bash bench/export.sh build/bench/bench/hushpane_bench_export
	bash bench/timeline.sh

clean:
	rm -rf build
