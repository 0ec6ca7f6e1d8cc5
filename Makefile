# Everyday commands. Each installs missing Debian packages first (a no-op when all are there).
RELEASE_DIR := build/release
DEBUG_DIR   := build/debug
JOBS        ?= $(shell nproc)

.PHONY: deps build run test bench clean

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

# Release benchmarks against the ffmpeg command line (fixtures made on first use).
bench: deps
	bash bench/analysis.sh

clean:
	rm -rf build
