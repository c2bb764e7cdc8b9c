# The two commands of the README: `make run` and `make test`. Each installs what is missing and builds first.
BUILD      ?= build
ASAN_BUILD ?= build/asan
JOBS       ?= $(shell nproc)
CMAKE_ARGS ?=
PROGRAM     = $(BUILD)/tarvika
CLI         = $(PROGRAM)/tarvika-cli

.PHONY: all deps configure build run test bench bench-scale asan gui screenshots stattab clean

all: build

deps:
	@bash scripts/install-deps.sh

$(BUILD)/build.ninja: | deps
	cmake -S . -B $(BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Release $(CMAKE_ARGS)

configure: deps $(BUILD)/build.ninja

build: configure
	cmake --build $(BUILD) -j $(JOBS)

run: build
	@bash scripts/run-example.sh $(PROGRAM)

# The tests of the label "slow" (the whole statistical-table generator check) run with `make bench`.
test: build
	cd $(BUILD) && ctest --output-on-failure -j $(JOBS) --timeout 600 -LE slow

bench: build
	cd $(BUILD) && ctest --output-on-failure --timeout 600 -L slow
	@bash scripts/run-benchmarks.sh $(BUILD)

# A project of 1,000,000 cases by 1000 variables, loaded: time and bytes per cell
# (VARIABLES=100 for the smaller one). Not part of bench: it writes about 5 GB.
bench-scale: build
	@bash bench/project_load/scale.sh $(BUILD) $(or $(VARIABLES),1000)

# The desktop program's tests run too, without a screen (each sets QT_QPA_PLATFORM=offscreen).
asan: deps
	cmake -S . -B $(ASAN_BUILD) -G Ninja -DCMAKE_BUILD_TYPE=Debug -DTARVIKA_SANITIZE=ON -DTARVIKA_GUI=ON $(CMAKE_ARGS)
	cmake --build $(ASAN_BUILD) -j $(JOBS)
	cd $(ASAN_BUILD) && ASAN_OPTIONS=detect_leaks=1 ctest --output-on-failure -j $(JOBS) --timeout 1200

# Regenerates the statistical table files of data/stattab from exact computations.
stattab: build
	$(BUILD)/tools/stattab/make_stattab data/stattab

gui: build
	$(PROGRAM)/tarvika

# Pictures of the main window, the single-sample dialog and the viewer, on the example project.
screenshots: build
	QT_QPA_PLATFORM=offscreen $(PROGRAM)/tarvika --screenshots $(BUILD)/screenshots $(PROGRAM)/dat/survey.msw

clean:
	rm -rf $(BUILD)
