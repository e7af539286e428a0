#!/bin/bash
# Answers every request with something else.
exec 3<>"/dev/tcp/127.0.0.1/$1"
while read -r _ <&3; do
  echo 'Hello?' >&3
done
