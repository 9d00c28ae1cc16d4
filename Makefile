# The front door: make run | test | windows | bench
.PHONY: run test windows native native-asan bench setup

# Text from the command line reaches the shell through the environment alone, so that no quote in it is lost.
export ARGS

run: windows
	@tools/run.sh

test: native native-asan windows
	@tools/test.sh

bench: native windows
	@tools/bench.sh

windows native native-asan: setup
	@cmake --preset $@ >build/$@.log || { cat build/$@.log; exit 1; }
	@cmake --build --preset $@

setup:
	@tools/setup.sh
	@mkdir -p build
