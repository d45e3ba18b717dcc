#!/usr/bin/env bash
# @WORKFLOW@:16, job build, step Expressions in double quotes, single quotes and a comment
# (line 4 here is line 16 of the workflow)
# Tag ${{ github.ref_name }}, don't expand
echo "${GITHUB_EXPRESSION_1}/out" 'GITHUB_EXPRESSION_2'
