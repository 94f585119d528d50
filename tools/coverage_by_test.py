#!/usr/bin/env python3
"""Line coverage of the application's folders, one test function at a time.

Usage: tools/coverage_by_test.py [BUILD_DIR] [tst_name ...]

BUILD_DIR is a build made by `tools/dev.sh coverage` (default build-cov).
Each test function runs alone, with the counters cleared before it, so the
result says which application lines each function reaches and which lines
only one function reaches. That is what to look at before merging or
dropping a test: a function whose every line another one reaches adds no
coverage (though it may still check something no other test checks).

Writes BUILD_DIR/coverage-by-test.json ({program: {function: {ok, lines}}})
and prints, per function, the lines it reaches and the lines only it
reaches. The counters of an earlier `tools/dev.sh coverage` run are lost.
"""
import collections
import glob
import json
import os
import re
import subprocess
import sys

root = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
build = os.path.abspath(sys.argv[1] if len(sys.argv) > 1 else os.path.join(root, 'build-cov'))
only = set(sys.argv[2:])
application = re.compile('^' + re.escape(root) + r'/(app|workflow|settings|widgets|platform|companions)/')
# Like CTest: offscreen, and a temporary folder of the run's own.
temporary = os.path.join(build, 'coverage-by-test-tmp')
os.makedirs(temporary, exist_ok=True)
environment = dict(os.environ, QT_QPA_PLATFORM='offscreen', TMPDIR=temporary)


def counters():
    return glob.glob(os.path.join(build, '**', '*.gcda'), recursive=True)


def covered_lines():
    by_folder = collections.defaultdict(list)
    for path in counters():
        if '/tests/' not in path:
            by_folder[os.path.dirname(path)].append(path)
    lines = set()
    for folder, files in by_folder.items():
        result = subprocess.run(['gcov', '--json-format', '--stdout', '-o', folder] + files,
                                cwd=build, capture_output=True, text=True)
        for chunk in result.stdout.splitlines():
            if not chunk.strip():
                continue
            report = json.loads(chunk)
            cwd = report.get('current_working_directory', build)
            for entry in report.get('files', []):
                path = os.path.normpath(os.path.join(cwd, entry['file']))
                if application.match(path):
                    relative = os.path.relpath(path, root)
                    lines.update('%s:%d' % (relative, line['line_number'])
                                 for line in entry['lines'] if line['count'] > 0)
    return lines


# The programs CTest runs, not every tst_* in the build folder: a test that
# was renamed or removed leaves its old program behind.
registered = subprocess.run(['ctest', '-N'], cwd=build, capture_output=True, text=True).stdout
programs = [os.path.join(build, 'tests', name)
            for name in sorted(set(re.findall(r'Test +#\d+: (tst_\w+)', registered)))]
results = {}
for program in programs:
    name = os.path.basename(program)
    if only and name not in only:
        continue
    listed = subprocess.run([program, '-functions'], capture_output=True, text=True,
                            env=environment).stdout.split()
    results[name] = {}
    for function in (f[:-2] for f in listed if f.endswith('()')):
        for path in counters():
            os.remove(path)
        run = subprocess.run([program, function], capture_output=True, env=environment)
        results[name][function] = {'ok': run.returncode == 0, 'lines': sorted(covered_lines())}
        print('%s %s: %s, %d lines' % (name, function, 'passed' if run.returncode == 0 else 'FAILED',
                                       len(results[name][function]['lines'])), flush=True)

with open(os.path.join(build, 'coverage-by-test.json'), 'w') as out:
    json.dump(results, out)
reached = collections.Counter(line for functions in results.values()
                              for result in functions.values() for line in result['lines'])
print('\n%d lines reached in all' % len(reached))
for name, functions in results.items():
    for function, result in functions.items():
        alone = [line for line in result['lines'] if reached[line] == 1]
        print('%-22s %-48s %5d lines, %4d only here' % (name, function, len(result['lines']),
                                                       len(alone)))
