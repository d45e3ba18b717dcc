#!/usr/bin/env python3
"""Writes the shell in the `run:` steps of GitHub workflows out as scripts,
so that shellcheck can read them (scripts/lint does).

    tools/lint/workflow-run-blocks.py OUTPUT_DIR WORKFLOW...

Each step that runs in bash or sh (the step's `shell`, else the job's or
the workflow's `defaults.run.shell`, else bash, as on GitHub's Linux and
macOS runners) becomes OUTPUT_DIR/<workflow>.<job>.line<N>.sh, N being the
workflow line where the step's script starts; its first lines name the step.
Steps in other shells (pwsh, python, ...) are listed as skipped.

GitHub replaces every `${{ expression }}` with its value as text before the
shell runs. Here each becomes `${GITHUB_EXPRESSION_<n>}` (a variable, which
shellcheck takes for one from the environment), or a plain word inside
single quotes, where a variable would not be expanded either.
"""
import os
import re
import sys

import yaml

EXPRESSION = re.compile(r"\$\{\{.*?\}\}", re.DOTALL)
HEADER_LINES = 3


def substitute_expressions(script):
    """Replaces each ${{ ... }} as the shell would see its value."""
    out = []
    position = 0
    count = 0
    in_single = in_double = in_comment = False
    while position < len(script):
        match = EXPRESSION.match(script, position)
        if match and not in_comment:
            count += 1
            name = "GITHUB_EXPRESSION_%d" % count
            out.append(name if in_single else "${%s}" % name)
            position = match.end()
            continue
        char = script[position]
        if in_comment:
            in_comment = char != "\n"
        elif char == "\\" and not in_single:
            out.append(script[position:position + 2])
            position += 2
            continue
        elif char == "'" and not in_double:
            in_single = not in_single
        elif char == '"' and not in_single:
            in_double = not in_double
        elif (char == "#" and not in_single and not in_double
              and (position == 0 or script[position - 1] in " \t\n;")):
            in_comment = True
        out.append(char)
        position += 1
    return "".join(out)


def shell_of(step, job, workflow):
    for holder in (step, (job.get("defaults") or {}).get("run") or {},
                   (workflow.get("defaults") or {}).get("run") or {}):
        shell = holder.get("shell")
        if shell:
            return str(shell)
    return "bash"


def run_nodes(mapping_node):
    """Maps each key of a YAML mapping node to its value node."""
    return {key.value: value for key, value in mapping_node.value}


def extract(path, output_dir):
    with open(path, encoding="utf-8") as file:
        text = file.read()
    workflow = yaml.safe_load(text) or {}
    root = yaml.compose(text)
    stem = os.path.splitext(os.path.basename(path))[0]
    written, skipped = [], []
    jobs = workflow.get("jobs") or {}
    job_nodes = run_nodes(run_nodes(root)["jobs"]) if jobs else {}
    for job_name, job in jobs.items():
        step_nodes = run_nodes(job_nodes[job_name]).get("steps")
        for index, step in enumerate(job.get("steps") or []):
            if "run" not in step:
                continue
            node = run_nodes(step_nodes.value[index])["run"]
            # A block scalar (| or >) starts on the line after its indicator.
            line = node.start_mark.line + (2 if node.style in ("|", ">") else 1)
            label = "%s:%d, job %s, step %s" % (
                path, line, job_name, step.get("name") or "#%d" % (index + 1))
            shell = shell_of(step, job, workflow)
            program = os.path.basename(shell.split()[0])
            if program not in ("bash", "sh"):
                skipped.append("%s (shell %s)" % (label, shell))
                continue
            target = os.path.join(output_dir, "%s.%s.line%d.sh" % (stem, job_name, line))
            with open(target, "w", encoding="utf-8") as out:
                out.write("#!/usr/bin/env %s\n" % program)
                out.write("# %s\n" % label)
                out.write("# (line %d here is line %d of the workflow)\n" % (HEADER_LINES + 1, line))
                out.write(substitute_expressions(str(step["run"])))
                if not str(step["run"]).endswith("\n"):
                    out.write("\n")
            written.append(target)
    return written, skipped


def main():
    if len(sys.argv) < 3:
        print(__doc__, file=sys.stderr)
        return 2
    output_dir = sys.argv[1]
    os.makedirs(output_dir, exist_ok=True)
    for path in sys.argv[2:]:
        written, skipped = extract(path, output_dir)
        for target in written:
            print(target)
        for label in skipped:
            print("skipped, not bash or sh: %s" % label, file=sys.stderr)
    return 0


if __name__ == "__main__":
    sys.exit(main())
