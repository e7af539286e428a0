#!/bin/bash
# Answers every request without its number.
exec 3<>"/dev/tcp/127.0.0.1/$1"
while read -r _ <&3; do
  echo '{"id":null,"ok":{}}' >&3
done
