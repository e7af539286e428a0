#!/bin/bash
# The real kernel, with its process id left in the working directory.
echo $$ >kernel.pid
exec "$VEK_BENCH_KERNEL" "$1"
