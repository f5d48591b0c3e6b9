"""StatisticsFigures.py: reckons the figures in StatisticsSets.txt anew from the times that stand
there, with SciPy (Debian 12: python3-scipy 1.10.1). The tests only read the file."""
import os

import numpy
from scipy import stats

path = os.path.join(os.path.dirname(__file__), 'StatisticsSets.txt')


def interval(times, share):
    """The order statistics with at most 2.5 percent beyond each, as far as there are times."""
    below = stats.binom(len(times), share)
    low = max(int(below.ppf(0.025)), 1)
    high = min(int(below.isf(0.025)) + 1, len(times))
    ordered = sorted(times)
    return [ordered[low - 1], ordered[high - 1], below.cdf(high - 1) - below.cdf(low - 1)]


def figures(x, y):
    yield 'spread', [min(x), numpy.median(x), max(x), stats.variation(x, ddof=1)]
    yield 'median', [numpy.percentile(x, 50)] + interval(x, 0.5)
    yield 'quartile', [numpy.percentile(x, 25)] + interval(x, 0.25)
    if len(set(x + y)) < len(x + y):
        ranks = stats.mannwhitneyu(x, y, alternative='two-sided', method='asymptotic',
                                   use_continuity=True)
    else:
        ranks = stats.mannwhitneyu(x, y, alternative='two-sided', method='exact')
    yield 'ranks', [ranks.statistic, ranks.pvalue]


lines = []
for line in open(path):
    key, *values = line.split() or ['']
    if key in ('x', 'y') or not line.startswith('    '):
        lines.append(line)
    if key == 'x':
        x = [float(value) for value in values]
    if key == 'y':
        for name, row in figures(x, [float(value) for value in values]):
            lines.append('    ' + ' '.join([name] + ['%.10g' % value for value in row]) + '\n')
with open(path, 'w') as file:
    file.writelines(lines)
