#include <QtCore/QCoreApplication>
#include <QtCore/QTextCodec>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    QCoreApplication application{argc, argv};
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    return RUN_ALL_TESTS();
}
