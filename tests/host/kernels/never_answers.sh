#!/bin/bash
# Connects and listens until it is let go.
exec 3<>"/dev/tcp/127.0.0.1/$1"
exec cat <&3 >/dev/null
