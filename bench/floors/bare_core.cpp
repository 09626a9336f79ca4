// What any program on Qt Core costs to start: an application object and one line.

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    std::puts("bare 1.0");
    return 0;
}
