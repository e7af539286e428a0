#!/bin/bash
# Connects, takes one request and dies of it.
exec 3<>"/dev/tcp/127.0.0.1/$1"
read -r _ <&3
exit 1
