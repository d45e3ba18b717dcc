#!/usr/bin/env bash
# @WORKFLOW@:13, job build, step One line
# (line 4 here is line 13 of the workflow)
scripts/test
