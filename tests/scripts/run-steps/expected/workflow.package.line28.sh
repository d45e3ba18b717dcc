#!/usr/bin/env sh
# @WORKFLOW@:28, job package, step #1
# (line 4 here is line 28 of the workflow)
echo folded
